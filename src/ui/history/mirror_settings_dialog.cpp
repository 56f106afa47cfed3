#include "ui/history/mirror_settings_dialog.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QUrl>
#include <QVBoxLayout>

#include "history/draw_download.h"
#include "screen/shared_state.h"
#include "store/factory_data.h"

namespace dovrex {

namespace {
bool isWebAddress(const QString& text) {
    const QUrl url(text.trimmed(), QUrl::StrictMode);
    return url.isValid() &&
           (url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https")) &&
           !url.host().isEmpty();
}
}  // namespace

MirrorSettingsDialog::MirrorSettingsDialog(QWidget* parent) : QDialog(parent) {
    setWindowTitle(QStringLiteral("下载地址设置"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(
        new QLabel(QStringLiteral("开奖数据从以下地址下载，一处下载失败时下次改用下一处："), this));
    auto* form = new QFormLayout;
    for (int i = 0; i < 3; ++i) {
        edits_[size_t(i)] = new QLineEdit(this);
        edits_[size_t(i)]->setMinimumWidth(420);
        edits_[size_t(i)]->setPlaceholderText(defaultMirrorAddresses()[i]);
        form->addRow(QStringLiteral("地址%1：").arg(i + 1), edits_[size_t(i)]);
    }
    layout->addLayout(form);
    note_ = new QLabel(this);
    note_->setStyleSheet(QStringLiteral("color: #c00000"));
    layout->addWidget(note_);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setText(QStringLiteral("确定"));
    buttons->button(QDialogButtonBox::Cancel)->setText(QStringLiteral("取消"));
    QPushButton* defaults = buttons->addButton(QStringLiteral("恢复默认"), QDialogButtonBox::ResetRole);
    connect(defaults, &QPushButton::clicked, this, [this] { setAddresses(defaultMirrorAddresses()); });
    connect(buttons, &QDialogButtonBox::accepted, this, &MirrorSettingsDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);

    if (shared().g_Store) setAddresses(load_MirrorAddresses());
}

QStringList MirrorSettingsDialog::addresses() const {
    QStringList out;
    for (QLineEdit* e : edits_) out << e->text().trimmed();
    return out;
}

void MirrorSettingsDialog::setAddresses(const QStringList& addresses) {
    for (int i = 0; i < 3; ++i) edits_[size_t(i)]->setText(addresses.value(i));
    note_->clear();
}

bool MirrorSettingsDialog::save() {
    const QStringList list = addresses();
    for (int i = 0; i < list.size(); ++i)
        if (!list[i].isEmpty() && !isWebAddress(list[i])) {
            note_->setText(
                QStringLiteral("地址%1不是有效的网址（应以 http:// 或 https:// 开头）。").arg(i + 1));
            edits_[size_t(i)]->setFocus();
            edits_[size_t(i)]->selectAll();
            return false;
        }
    try {
        save_MirrorAddresses(list);
    } catch (const StoreError& e) {
        note_->setText(QStringLiteral("无法保存：") + e.text);
        return false;
    }
    return true;
}

void MirrorSettingsDialog::accept() {
    if (save()) QDialog::accept();
}

}  // namespace dovrex
