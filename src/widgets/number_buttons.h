#pragma once

#include <QList>
#include <QWidget>
#include <array>

class QPushButton;

namespace dovrex {

// The numbers 01..33 as small buttons in rows, each lit when the number belongs to the group being
// edited. A click only reports the number: the page writes the store and then lights the button.
class NumberButtons : public QWidget {
    Q_OBJECT
  public:
    NumberButtons(const QString& namePrefix, int perRow, QWidget* parent = nullptr);

    void setMembers(const std::array<bool, 34>& members);
    void setOn(int n, bool on);
    bool isOn(int n) const;
    QPushButton* button(int n) const { return buttons_.value(n - 1); }

  signals:
    void numberClicked(int n);

  private:
    QList<QPushButton*> buttons_;
};

}  // namespace dovrex
