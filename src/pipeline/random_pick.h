#pragma once

#include <QString>
#include <array>
#include <cstdint>
#include <random>

namespace dovrex {

// The random pick of frmJixuan: up to five tickets, none of them reaching 日志表.
inline constexpr int kJiXuanMax = 5;
// jiXuanHao: per ticket six reds in the order drawn, then the blue in column 7 (index 6); 0 is empty.
using JiXuanHao = std::array<std::array<int, 7>, kJiXuanMax>;

// The number of tickets typed in the window's prompt: its numeric value cut to an integer, at most 5;
// 0 (close the window) below 1, for an empty answer and for a cancel.
int jiXuan_ZhuShu(const QString& answer);

// Draws the tickets one ball at a time: the blue first, then six reds with no repeat within a ticket
// (a red already drawn is drawn again). `shown` is told each ball as it comes, in that order
// (ticket 0.., ball 0..5 reds, 6 the blue), so a window can show them one by one.
class JiXuanDraw {
  public:
    explicit JiXuanDraw(int zhuShu, uint64_t seed);
    // A seed from the clock.
    static uint64_t clockSeed();

    // The next ball; false when every ticket is complete.
    bool next(int& ticket, int& column);
    const JiXuanHao& hao() const { return hao_; }
    int zhuShu() const { return zhuShu_; }

  private:
    int draw(int count);
    int zhuShu_;
    JiXuanHao hao_{};
    std::mt19937_64 random_;
    int ticket_ = 0;
    int step_ = 0;  // 0 the blue, 1..6 the reds
    std::array<bool, 34> red_{};
};

// The text the window's 导出 writes: one line a complete ticket, reds as drawn, e.g. 01 02 03 04 05 06+07.
QString jiXuan_Text(const JiXuanHao& hao);

namespace msg {
inline const QString kJiXuanCaption = QStringLiteral("机选号码");
inline const QString kJiXuanAsk = QStringLiteral("请输入要机选的注数（１～５注）：");
inline const QString kJiXuanNote = QStringLiteral(
    "特别说明：\r\n“机选”功能是为增强软件的趣味性而设置的一个功能，所\r\n有机选产生的号码完全由软件随机生成，"
    "并没有加入任何概\r\n率分析或者过滤条件的限制。");
}  // namespace msg

}  // namespace dovrex
