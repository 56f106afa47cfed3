#pragma once

#include <QDialog>
#include <array>
#include <functional>

class QPushButton;

namespace dovrex {

// Set once the calendar tables are filled; they are filled once per run.
bool& rili_YiChuShiHua();
// Fills the calendar tables unless done already.
void ensureNongLiTables();

// Opens the random pick window (frmJixuan) modally over a parent. Set by that window's part; while
// it is unset the chooser's first button is disabled.
std::function<void(QWidget*)>& jixuanOpener();
// Opens the birth-chart window modally; tests replace it.
std::function<void(QWidget*)>& baziOpener();

// frmLuckyNumber: "幸运号码类型——", the chooser between the random pick and the birth-chart pick.
// Either choice hides the chooser, runs the other window, and closes the chooser after it.
class LuckyNumberWindow : public QDialog {
    Q_OBJECT
  public:
    explicit LuckyNumberWindow(QWidget* parent = nullptr);
    // 0 退出, 1 机选一组号码, 2 根据生辰八字选一组号码.
    void cmmLuckyNumberClass_Click(int index);
    QPushButton* button(int index) const { return buttons_[size_t(index)]; }

  private:
    std::array<QPushButton*, 3> buttons_{};
};

}  // namespace dovrex
