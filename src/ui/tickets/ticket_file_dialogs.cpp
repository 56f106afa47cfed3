#include "ui/tickets/from_file_dialog.h"
#include "ui/tickets/to_file_dialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpressionValidator>
#include <QVBoxLayout>

#include "results/ticket_export.h"
#include "results/ticket_import.h"

namespace dovrex {

namespace {

const QString kTitle = QStringLiteral("双色球 dovrex");

QDialogButtonBox* okCancel(QDialog* dialog) {
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, dialog);
    QPushButton* ok = buttons->button(QDialogButtonBox::Ok);
    ok->setText(QStringLiteral("确定"));
    ok->setObjectName(QStringLiteral("cmm_ToFileOK"));
    QPushButton* cancel = buttons->button(QDialogButtonBox::Cancel);
    cancel->setText(QStringLiteral("取消"));
    cancel->setObjectName(QStringLiteral("cmm_Cancel"));
    QObject::connect(buttons, &QDialogButtonBox::accepted, dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    return buttons;
}

// An editable list of separators: picking an item puts its text in the box ("空格" a blank).
QComboBox* separatorBox(const QString& name, const QStringList& items, const QString& text, QWidget* parent) {
    auto* box = new QComboBox(parent);
    box->setObjectName(name);
    box->setEditable(true);
    box->setInsertPolicy(QComboBox::NoInsert);
    box->addItems(items);
    box->setEditText(text);
    box->setToolTip(QStringLiteral("如需其他的分隔符可以在此直接输入"));
    QObject::connect(box, &QComboBox::activated, box,
                     [box](int i) { box->setEditText(export_SeparatorText(box->itemText(i))); });
    return box;
}

}  // namespace

ToFileDialog::ToFileDialog(const TicketExportOptions& options, QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmToFile"));
    setWindowTitle(QStringLiteral("号码导出"));
    auto* layout = new QVBoxLayout(this);

    auto* what = new QGroupBox(QStringLiteral("导出内容"), this);
    auto* row = new QHBoxLayout(what);
    const QStringList captions{QStringLiteral("序号"), QStringLiteral("期号"), QStringLiteral("号码"),
                               QStringLiteral("分隔行")};
    for (int i = 0; i < 4; ++i) {
        switches_[size_t(i)] = new QCheckBox(captions[i], what);
        switches_[size_t(i)]->setObjectName(QStringLiteral("Check_ToFile%1").arg(i));
        switches_[size_t(i)]->setChecked(options.daoChuXuanXiang[size_t(i)]);
        row->addWidget(switches_[size_t(i)]);
    }
    switches_[3]->setToolTip(QStringLiteral("每五注之后空一行"));
    layout->addWidget(what);

    auto* form = new QFormLayout;
    presets_ = new QComboBox(this);
    presets_->setObjectName(QStringLiteral("Combocangyong"));
    presets_->addItems(export_PresetItems());
    // Opens on the preset the separators match, else on the free one.
    TicketExportOptions probe = options;
    int current = export_PresetItems().size() - 1;
    for (int i = 0; i < export_PresetItems().size() - 1; ++i) {
        probe = options;
        export_ApplyPreset(export_PresetItems()[i], probe);
        if (probe.hongJianGe == options.hongJianGe && probe.hongLanJianGe == options.hongLanJianGe)
            current = i;
    }
    presets_->setCurrentIndex(current);
    form->addRow(QStringLiteral("导出格式："), presets_);
    redSeparator_ =
        separatorBox(QStringLiteral("Text_FGred"), export_RedSeparatorItems(), options.hongJianGe, this);
    blueSeparator_ =
        separatorBox(QStringLiteral("Text_FG"), export_BlueSeparatorItems(), options.hongLanJianGe, this);
    form->addRow(QStringLiteral("红球间隔符："), redSeparator_);
    form->addRow(QStringLiteral("红蓝分隔符："), blueSeparator_);
    layout->addLayout(form);
    connect(presets_, &QComboBox::activated, this, &ToFileDialog::choosePreset);

    auto* note = new QLabel(QStringLiteral("确定后选择保存的位置；导出的号码同时复制到粘贴板。"), this);
    note->setWordWrap(true);
    layout->addWidget(note);
    layout->addWidget(okCancel(this));
}

void ToFileDialog::choosePreset(int index) {
    TicketExportOptions o = options();
    if (!export_ApplyPreset(presets_->itemText(index), o)) {
        QMessageBox::information(this, kTitle, msg::kSetSeparators);
        redSeparator_->setFocus();
        return;
    }
    redSeparator_->setEditText(o.hongJianGe);
    blueSeparator_->setEditText(o.hongLanJianGe);
}

TicketExportOptions ToFileDialog::options() const {
    TicketExportOptions o;
    for (int i = 0; i < 4; ++i) o.daoChuXuanXiang[size_t(i)] = switches_[size_t(i)]->isChecked();
    o.hongJianGe = redSeparator_->currentText();
    o.hongLanJianGe = blueSeparator_->currentText();
    return o;
}

FromFileDialog::FromFileDialog(const TicketImportOptions& options, QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmFromFile"));
    setWindowTitle(QStringLiteral("号码导入"));
    auto* layout = new QVBoxLayout(this);
    auto* frame = new QGroupBox(msg::kFromFileCaption, this);
    auto* inner = new QVBoxLayout(frame);
    const QStringList captions{QStringLiteral("只有号码"), QStringLiteral(" 期号＋号码"),
                               QStringLiteral(" 序号＋号码")};
    for (int i = 0; i < 3; ++i) {
        layouts_[size_t(i)] = new QRadioButton(captions[i], frame);
        layouts_[size_t(i)]->setObjectName(QStringLiteral("Option_GeShi%1").arg(i));
        inner->addWidget(layouts_[size_t(i)]);
        connect(layouts_[size_t(i)], &QRadioButton::toggled, this, &FromFileDialog::layoutChosen);
    }
    auto* row = new QHBoxLayout;
    issueLabel_ = new QLabel(QStringLiteral("号码对应的期号："), frame);
    issue_ = new QLineEdit(options.daoRuQiHao, frame);
    issue_->setObjectName(QStringLiteral("Txt_FromFileQS"));
    issue_->setValidator(
        new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9]*")), issue_));
    issueLabel_->setBuddy(issue_);
    row->addWidget(issueLabel_);
    row->addWidget(issue_);
    inner->addLayout(row);
    auto* hint = new QLabel(msg::kFromFileHint, frame);
    hint->setWordWrap(true);
    inner->addWidget(hint);
    layout->addWidget(frame);
    QDialogButtonBox* buttons = okCancel(this);
    layout->addWidget(buttons);
    // Enter in the issue box moves on, as in the old dialog, instead of closing it.
    buttons->button(QDialogButtonBox::Ok)->setAutoDefault(false);
    connect(issue_, &QLineEdit::returnPressed, this, [this] { focusNextChild(); });

    layouts_[size_t(qBound(0, options.daoRuGeShi, 2))]->setChecked(true);
    layoutChosen();
}

void FromFileDialog::layoutChosen() {
    const bool fromLines = layouts_[TicketImportOptions::kIssueAndNumbers]->isChecked();
    issue_->setEnabled(!fromLines);
    issueLabel_->setEnabled(!fromLines);
}

TicketImportOptions FromFileDialog::options() const {
    TicketImportOptions o;
    for (int i = 0; i < 3; ++i)
        if (layouts_[size_t(i)]->isChecked()) o.daoRuGeShi = i;
    o.daoRuQiHao = issue_->text();
    return o;
}

void FromFileDialog::accept() {
    const QString error = import_InputError(options());
    if (!error.isEmpty()) {
        QMessageBox::information(this, kTitle, error);
        issue_->setFocus();
        return;
    }
    QDialog::accept();
}

}  // namespace dovrex
