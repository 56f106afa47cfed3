#pragma once

#include <QDialog>
#include <array>

#include "calendar/bazi_haoma.h"

class QPlainTextEdit;
class QPushButton;

namespace dovrex {

class CnCalendar;

// frmBaziXuanhao: one ticket from a birth date and time. The calendar takes the birth moment; the
// text field in its place shows the ticket, the report, the year's terms or the help.
class BaziWindow : public QDialog {
    Q_OBJECT
  public:
    explicit BaziWindow(QWidget* parent = nullptr);

    // 0 关闭, 1 选号, 2 返回, 3 节气, 4 小知识, 5 八字.
    void cmmBazixuanhao_Click(int index);
    // The report of the calendar's moment; fills the state the ticket needs.
    QString make_BaziReport();
    QString make_BaziHaoMa() const;

    CnCalendar* calendar() const { return cnCalendar1_; }
    QPushButton* button(int index) const { return buttons_[size_t(index)]; }
    bool resultShown() const;
    // The text shown, with the program's own line ends.
    QString resultText() const { return result_; }

  private:
    void show_Result();
    void setResult(const QString& text, int extraPoints);

    CnCalendar* cnCalendar1_;
    QPlainTextEdit* textShow_;
    QPlainTextEdit* text1_;  // the help text; its font is the measure of the others
    std::array<QPushButton*, 6> buttons_{};
    BaziState state_;
    QString result_;
};

// The help text of the window.
QString baziHelpText();

}  // namespace dovrex
