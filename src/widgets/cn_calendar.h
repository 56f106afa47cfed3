#pragma once

#include <QColor>
#include <QDate>
#include <QDateTime>
#include <QTimer>
#include <QWidget>
#include <array>
#include <cstdint>

class QComboBox;
class QLabel;
class QToolButton;

namespace dovrex {

class CnCalendarGrid;

// CnCalendar: a month view with Gregorian and lunar text, solar terms and festivals, a head with
// year and month combos and step buttons (held down they repeat), and the birth hour and minute.
// It shows 1901-01-01 to 2100-12-31; its functions put the selected date in place of any other.
class CnCalendar : public QWidget {
    Q_OBJECT
  public:
    explicit CnCalendar(QWidget* parent = nullptr);

    QDate value() const { return value_; }
    void setValue(const QDate& date);
    // The selected date with the birth hour and minute of the combos.
    QDateTime valueDateTime() const;
    void setValueDateTime(const QDateTime& dateTime);

    bool big() const { return big_; }
    void setBig(bool big);
    void setShowVerticalGrid(bool on);
    void setShowHorizontalGrid(bool on);
    bool showVerticalGrid() const { return showVerticalGrid_; }
    bool showHorizontalGrid() const { return showHorizontalGrid_; }
    void setColors(const QColor& title, const QColor& week, const QColor& date, const QColor& bottom,
                   const QColor& gridLines, const QColor& select);
    QColor titleBackColor() const { return titleBack_; }
    QColor weekBackColor() const { return weekBack_; }
    QColor dateBackColor() const { return dateBack_; }
    QColor bottomBackColor() const { return bottomBack_; }
    QColor gridLinesColor() const { return gridLines_; }
    QColor selectColor() const { return select_; }
    // Whether the birth time combos are shown.
    void setBirthTimeShown(bool shown);

    QString get_NongLiText(const QDate& date) const;
    QString get_NongLiMonthText(const QDate& date) const;
    QString get_NongLiDayText(const QDate& date) const;
    QString get_XingZuo(const QDate& date) const;
    QString get_XingQi(const QDate& date, int style = 0) const;
    // The almanac of the selected year, and its term times (see the almanac module).
    QString getJieQi1() const;
    QString getJieQistr(const QString& termName, int termIndex, bool allTerms) const;

    // One step of the buttons: 1 year up, 2 year down, 3 month down, 4 month up. False when the
    // range ends it (and the repeat stops).
    bool step(int mode);
    // Held step buttons: the first step at once, then one every 100 ms until released.
    void startRepeat(int mode);
    void stopRepeat();
    bool repeating() const { return timer1_.isActive(); }

    // The text of the bottom line.
    QString bottomText() const;
    // The grid cell (0..36) of a date of the shown month, -1 when none.
    int cellOf(const QDate& date) const;
    // The shown month on 37 cells, Sunday first (0 for no day).
    std::array<std::int16_t, 37> cells() const;
    CnCalendarGrid* grid() const { return grid_; }

  signals:
    void valueChanged(const QDate& date);
    void changed();

  private:
    friend class CnCalendarGrid;
    QDate guarded(const QDate& date) const;
    void showValue();
    void refreshBottom();

    QDate value_;
    bool big_ = false;
    bool showVerticalGrid_ = true;
    bool showHorizontalGrid_ = true;
    QColor titleBack_{0xF0, 0xF4, 0xFA}, weekBack_{0xDD, 0xE6, 0xF3}, dateBack_{Qt::white},
        bottomBack_{0xF0, 0xF4, 0xFA}, gridLines_{0xC8, 0xD2, 0xE0}, select_{0xFF, 0xE4, 0x9C};
    int mode_ = 0;
    bool updating_ = false;

    QTimer timer1_;
    QComboBox* combo1_;  // years
    QComboBox* combo2_;  // months
    QComboBox* combo3_;  // birth hour
    QComboBox* combo4_;  // birth minute
    QLabel* label1_;     // year
    QLabel* label2_;     // month
    QLabel* label4_;     // "出生时间："
    QLabel* label5_;     // the selected date
    QLabel* labelButtom_;
    QToolButton* picture1_[2];  // year down, month down
    QToolButton* picture2_[2];  // month up, year up
    CnCalendarGrid* grid_;
};

// The day cells of the shown month, Sunday first.
class CnCalendarGrid : public QWidget {
    Q_OBJECT
  public:
    explicit CnCalendarGrid(CnCalendar& owner);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    // The cell index under a point of the widget, -1 outside the days.
    int cellAt(const QPoint& pos) const;
    QRect cellRect(int cell) const;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

  private:
    int headHeight() const;
    CnCalendar& owner_;
};

}  // namespace dovrex
