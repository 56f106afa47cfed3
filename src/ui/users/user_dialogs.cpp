#include "ui/users/first_run_dialog.h"
#include "ui/users/login_dialog.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "users/users.h"
#include "widgets/command_trap.h"

namespace dovrex {

FirstRunDialog::FirstRunDialog(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmFirstrun"));
    setWindowTitle(QStringLiteral("选择使用模式"));
    auto* layout = new QVBoxLayout(this);
    auto* intro = new QLabel(QStringLiteral("如果这台电脑上只有你一个人使用此软件请选择“单用户模式”\n\n"
                                            "如果这台电脑上有多个用户使用到此软件请选择“多用户模式”\n"
                                            "(投注站等可能有多用户使用的情况下请选择“多用户模式”)"),
                             this);
    intro->setWordWrap(true);
    layout->addWidget(intro);
    options_ = new QButtonGroup(this);
    const QString captions[] = {QStringLiteral("单用户模式"), QStringLiteral("多用户模式")};
    for (int mode = kSingleUserMode; mode <= kMultiUserMode; ++mode) {
        auto* option = new QRadioButton(captions[mode - 1], this);
        option->setObjectName(QStringLiteral("Option_userMode(%1)").arg(mode));
        options_->addButton(option, mode);
        layout->addWidget(option);
    }
    options_->button(kSingleUserMode)->setChecked(true);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    auto* next = new QPushButton(QStringLiteral("下一步"), this);
    next->setObjectName(QStringLiteral("cmdOK"));
    next->setDefault(true);
    auto* quit = new QPushButton(QStringLiteral("退出系统"), this);
    quit->setObjectName(QStringLiteral("cmd_End"));
    buttons->addWidget(next);
    buttons->addWidget(quit);
    layout->addLayout(buttons);
    connect(next, &QPushButton::clicked, this, [this] {
        mode_ = options_->checkedId();
        accept();
    });
    connect(quit, &QPushButton::clicked, this, [this] {
        mode_ = 0;
        reject();
    });
}

LoginDialog::LoginDialog(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmODBCLogon"));
    setWindowTitle(QStringLiteral("用户登录"));
    names_ = new QComboBox(this);
    names_->setObjectName(QStringLiteral("Combo_userName"));
    names_->setEditable(true);
    names_->addItems(userNames());
    names_->setMinimumWidth(220);
    password_ = new QLineEdit(this);
    password_->setObjectName(QStringLiteral("txtPWD"));
    password_->setEchoMode(QLineEdit::Password);
    hint_ = new QLabel(this);
    hint_->setWordWrap(true);
    hint_->hide();

    auto* form = new QFormLayout;
    form->addRow(QStringLiteral("用户名："), names_);
    form->addRow(QStringLiteral("密  码："), password_);
    auto* buttons = new QHBoxLayout;
    auto* ok = new QPushButton(QStringLiteral("登 陆"), this);
    ok->setObjectName(QStringLiteral("cmdOK"));
    ok->setDefault(true);
    auto* fresh = new QPushButton(QStringLiteral("我是新用户"), this);
    fresh->setObjectName(QStringLiteral("cmd_newUser"));
    auto* quit = new QPushButton(QStringLiteral("退出系统"), this);
    quit->setObjectName(QStringLiteral("cmd_End"));
    buttons->addWidget(ok);
    buttons->addWidget(fresh);
    buttons->addWidget(quit);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(hint_);
    layout->addLayout(buttons);
    connectCommand(ok, &QPushButton::clicked, this, [this] { submit(); });
    connectCommand(fresh, &QPushButton::clicked, this, [this] { newUser(); });
    connect(quit, &QPushButton::clicked, this, &QDialog::reject);
}

void LoginDialog::submit() {
    if (login_Submit(names_->currentText(), password_->text()) != LoginResult::LoggedIn) return;
    loggedIn_ = true;
    accept();
}

void LoginDialog::newUser() {
    hint_->setText(msg::kNewUserHint);
    hint_->show();
    // A new user sees what is typed.
    password_->setEchoMode(QLineEdit::Normal);
    names_->setEditText(QString());
    names_->setFocus();
}

}  // namespace dovrex
