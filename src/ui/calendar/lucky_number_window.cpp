#include "ui/calendar/lucky_number_window.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "calendar/nongli.h"
#include "ui/calendar/bazi_window.h"
#include "widgets/command_trap.h"

namespace dovrex {

bool& rili_YiChuShiHua() {
    static bool filled = false;
    return filled;
}

void ensureNongLiTables() {
    if (rili_YiChuShiHua()) return;
    init_NongLiTables();
    rili_YiChuShiHua() = true;
}

std::function<void(QWidget*)>& jixuanOpener() {
    static std::function<void(QWidget*)> open;
    return open;
}

std::function<void(QWidget*)>& baziOpener() {
    static std::function<void(QWidget*)> open = [](QWidget* parent) {
        BaziWindow window(parent);
        window.exec();
    };
    return open;
}

LuckyNumberWindow::LuckyNumberWindow(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmLuckyNumber"));
    setWindowTitle(QStringLiteral("幸运号码类型——"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 18, 24, 18);
    layout->setSpacing(10);
    auto* note = new QLabel(QStringLiteral("请选择产生幸运号码的方式："), this);
    layout->addWidget(note);
    static const char* const kCaptions[3] = {"退 出", "机选一组号码", "根据生辰八字选一组号码"};
    for (int i = 0; i < 3; ++i) {
        auto* b = new QPushButton(QString::fromUtf8(kCaptions[i]), this);
        b->setObjectName(QStringLiteral("cmmLuckyNumberClass_%1").arg(i));
        b->setMinimumSize(240, 34);
        b->setAutoDefault(false);
        connectCommand(b, &QPushButton::clicked, this, [this, i] { cmmLuckyNumberClass_Click(i); });
        buttons_[size_t(i)] = b;
    }
    for (int i : {1, 2, 0}) layout->addWidget(buttons_[size_t(i)]);
    buttons_[1]->setDefault(true);  // Enter: a random pick
    if (!jixuanOpener()) {
        buttons_[1]->setEnabled(false);
        buttons_[1]->setToolTip(QStringLiteral("机选窗口尚未提供"));
    }
    setFixedSize(sizeHint());
}

void LuckyNumberWindow::cmmLuckyNumberClass_Click(int index) {
    switch (index) {
        case 0:
            close();
            return;
        case 1:
            if (!jixuanOpener()) return;
            hide();
            jixuanOpener()(parentWidget());
            close();
            return;
        case 2:
            ensureNongLiTables();
            hide();
            baziOpener()(parentWidget());
            close();
            return;
        default:
            return;
    }
}

}  // namespace dovrex
