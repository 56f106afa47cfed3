#include "widgets/timed_tip.h"

#include "screen/screen.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace dovrex {

namespace {
QString okCaption(int n) {
    return QStringLiteral("知道了(%1)").arg(n);
}
}  // namespace

TimedTip::TimedTip(const QString& text, int seconds, QWidget* parent)
    : QDialog(parent), n_(qMax(1, seconds)) {
    setObjectName(QStringLiteral("frmTip"));
    setWindowTitle(msg::kInfoTitle);
    setAttribute(Qt::WA_DeleteOnClose);
    setModal(false);

    description_ = new QLabel(text, this);
    description_->setObjectName(QStringLiteral("lblDescription"));
    description_->setWordWrap(true);
    description_->setMinimumWidth(260);
    ok_ = new QPushButton(okCaption(n_), this);
    ok_->setObjectName(QStringLiteral("cmdOK"));
    ok_->setDefault(true);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(ok_);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(description_, 1);
    layout->addLayout(buttons);

    connect(ok_, &QPushButton::clicked, this, [this] {
        timer_.stop();
        close();
    });
    timer_.setInterval(1000);
    connect(&timer_, &QTimer::timeout, this, &TimedTip::tick);
    timer_.start();
}

void TimedTip::tick() {
    --n_;
    if (n_ > 0) {
        ok_->setText(okCaption(n_));
        return;
    }
    timer_.stop();
    close();
}

PreparingTip::PreparingTip(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmTip10"));
    setWindowTitle(msg::kInfoTitle);
    setAttribute(Qt::WA_DeleteOnClose);
    setModal(false);
    no_ = new QPushButton(QStringLiteral("正在准备数据......"), this);
    no_->setObjectName(QStringLiteral("cmmNO"));
    no_->setMinimumWidth(220);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(no_);
    timer_.setInterval(1000);
    connect(&timer_, &QTimer::timeout, this, &PreparingTip::tick);
    timer_.start();
}

void PreparingTip::tick() {
    --n_;
    if (n_ > 0) {
        no_->setText(QStringLiteral("正在准备数据(%1)......").arg(n_));
        return;
    }
    timer_.stop();
    close();
}

}  // namespace dovrex
