#include "widgets/jindu_panel.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "analysis/jindu.h"

namespace dovrex {

JinDuPanel::JinDuPanel(myJinDuCTL& state, QWidget* parent) : QFrame(parent), state_(state) {
    setObjectName(QStringLiteral("myJinDuCTL"));
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    setFixedSize(300, 82);  // 4500 by 1230 twips
    // The parts carry a prefix: the screen finds controls by name, and the ticket page has its own
    // FrameStop, cmm_stop and LabelJindu.
    tip_ = new QLabel(this);
    tip_->setObjectName(QStringLiteral("JinDu_TextTip"));
    bar_ = new QProgressBar(this);
    bar_->setObjectName(QStringLiteral("JinDu_Bar"));
    bar_->setTextVisible(false);
    bar_->setMaximumHeight(14);
    done_ = new QLabel(this);
    done_->setObjectName(QStringLiteral("JinDu_LabelJindu"));
    all_ = new QLabel(this);
    all_->setObjectName(QStringLiteral("JinDu_LabelJinduAll"));
    stopFrame_ = new QFrame(this);
    stopFrame_->setObjectName(QStringLiteral("JinDu_FrameStop"));
    stop_ = new QPushButton(QStringLiteral("停 止"), stopFrame_);
    stop_->setObjectName(QStringLiteral("JinDu_cmm_stop"));
    auto* stopLayout = new QHBoxLayout(stopFrame_);
    stopLayout->setContentsMargins(0, 0, 0, 0);
    stopLayout->addWidget(stop_);

    auto* counts = new QHBoxLayout;
    counts->addWidget(done_);
    counts->addWidget(new QLabel(QStringLiteral("/"), this));
    counts->addWidget(all_);
    counts->addStretch(1);
    counts->addWidget(stopFrame_);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(10, 6, 10, 6);
    layout->setSpacing(4);
    layout->addWidget(tip_);
    layout->addWidget(bar_);
    layout->addLayout(counts);

    connect(stop_, &QPushButton::clicked, &state_, &myJinDuCTL::cmm_stop_Click);
    connect(&state_, &myJinDuCTL::changed, this, &JinDuPanel::sync);
    sync();
}

QString JinDuPanel::countText() const {
    return done_->text() + QLatin1Char('/') + all_->text();
}

void JinDuPanel::sync() {
    tip_->setText(state_.tipTxt());
    bar_->setRange(state_.barMinimum(), state_.barMaximum());
    bar_->setValue(state_.shownValue());
    done_->setText(state_.labelJindu());
    all_->setText(state_.labelJinduAll());
    stopFrame_->setVisible(state_.StopEnabled());
    stop_->setEnabled(state_.stopButtonEnabled());
    setEnabled(state_.Enabled());
    if (state_.visible() != isVisible()) {
        setVisible(state_.visible());
        if (state_.visible()) raise();
    }
}

}  // namespace dovrex
