#include "pipeline/random_pick.h"

#include <QDateTime>
#include <QDir>
#include <QStringList>
#include <chrono>
#include <cmath>

#include "domain/game.h"
#include "screen/shared_state.h"
#include "screen/ticket_page.h"

namespace dovrex {

int jiXuan_ZhuShu(const QString& answer) {
    // A plain number is cut to an integer; anything else is read from its head, as the issue prompts do.
    const QString text = answer.trimmed();
    bool ok = false;
    double value = text.toDouble(&ok);
    if (!ok) value = readIssue(text);
    if (!std::isfinite(value) || value < 1) return 0;
    return value > kJiXuanMax ? kJiXuanMax : int(std::floor(value));
}

JiXuanDraw::JiXuanDraw(int zhuShu, uint64_t seed) : zhuShu_(qBound(0, zhuShu, kJiXuanMax)), random_(seed) {}

uint64_t JiXuanDraw::clockSeed() {
    return uint64_t(std::chrono::high_resolution_clock::now().time_since_epoch().count());
}

int JiXuanDraw::draw(int count) {
    // The integer part of a uniform value in [0, 1) times the count, plus one.
    return int(std::floor(std::uniform_real_distribution<double>(0.0, 1.0)(random_) * count)) + 1;
}

bool JiXuanDraw::next(int& ticket, int& column) {
    if (ticket_ >= zhuShu_) return false;
    ticket = ticket_;
    if (step_ == 0) {
        red_.fill(false);
        column = 6;
        hao_[size_t(ticket_)][6] = draw(kBlueCount);
    } else {
        int n = draw(kRedCount);
        while (red_[size_t(n)]) n = draw(kRedCount);
        red_[size_t(n)] = true;
        column = step_ - 1;
        hao_[size_t(ticket_)][size_t(column)] = n;
    }
    if (++step_ > 6) {
        step_ = 0;
        ++ticket_;
    }
    return true;
}

QString jiXuan_Text(const JiXuanHao& hao) {
    QString text;
    for (const auto& row : hao) {
        if (row[6] <= 0) continue;
        QString line;
        for (int i = 0; i < 6; ++i)
            line += QStringLiteral("%1 ").arg(row[size_t(i)], 2, 10, QLatin1Char('0'));
        text += line.trimmed() + u'+' + QStringLiteral("%1").arg(row[6], 2, 10, QLatin1Char('0')) +
                QStringLiteral("  ");
    }
    text = text.trimmed();
    text.replace(QStringLiteral("  "), QStringLiteral("\n"));
    return text;
}

}  // namespace dovrex
