#include "analysis/omission.h"

#include <algorithm>

#include "screen/shared_state.h"
#include "store/store.h"

namespace dovrex {

namespace {

// The gap figures of one number from the 总期号 of its hits in ascending order. With fewer than two
// hits nothing is computed and the figures of the previous number stay in `r`.
void gapFigures(const std::vector<int>& hits, int total, OmissionRecord& r) {
    const int count = int(hits.size());
    if (count > 1) {
        int prev = -1, sum = 0, gap = 0;
        r.maxGap = 0;
        for (const int z : hits) {
            gap = z - prev - 1;
            r.maxGap = std::max(r.maxGap, gap);
            sum += gap;
            prev = z;
        }
        r.lastGap = gap;
        r.curGap = total - prev;
        // One term fewer than the gaps summed: the stretch before the first hit is in the sum only.
        r.avgGap = int(roundHalfEven(double(sum) / double(count - 1)));
    }
    r.hitCount = count;
}

// One pass over the draws up to the issue: numbers them in 总期号 and leaves in 遗漏数据 what the
// marking of the red numbers leaves (the row's highest red; 0 for the blue count), while the hits of
// every number are collected in memory.
OmissionTable calcOmission(IssueNumber issue, bool red) {
    const int count = red ? kRedCount : kBlueCount;
    screen().ui_Progress(0, count, 1, true);
    std::vector<std::vector<int>> hits(size_t(count) + 1);
    int total = 0;
    {
        Transaction tx(store());
        auto c = store_Query(
            QStringLiteral(
                "select 期号,总期号,遗漏数据,红球1,红球2,红球3,红球4,红球5,红球6,蓝球 from 历史记录 "
                "where 期号<=%1 order by 期号 asc")
                .arg(issue));
        int counter = 0;
        for (c->moveFirst(); !c->eof(); c->moveNext()) {
            int mark = 0;
            auto hit = [&](int n) {
                auto& list = hits[size_t(n)];
                if (list.empty() || list.back() != counter) list.push_back(counter);
            };
            for (int b = 3; b <= 8; ++b) {
                const int v = c->intValue(b);
                if (v < 1 || v > kRedCount) continue;
                mark = std::max(mark, v);
                if (red) hit(v);
            }
            if (!red) {
                const int v = c->intValue(9);
                if (v >= 1 && v <= kBlueCount) hit(v);
            }
            if (c->intValue(0) == int(issue)) total = counter;
            c->setValue(1, counter);
            c->setValue(2, red ? mark : 0);
            c->update();
            ++counter;
        }
        c->close();
    }

    OmissionTable table(size_t(count) + 1);
    OmissionRecord running;  // carries the figures of a number to the next
    int allMax = 0;
    for (int n = 1; n <= count; ++n) {
        screen().ui_Pump();
        screen().ui_Progress(0, count, n, true);
        gapFigures(hits[size_t(n)], total, running);
        allMax = std::max(allMax, running.maxGap);
        table[size_t(n)] = running;
    }
    for (auto& r : table) r.allMax = allMax;
    screen().ui_Progress(0, count, count, false);
    return table;
}

QString ballText(int n) {
    return to_QuanJiao(twoDigits(n));
}

QString countLines(const OmissionRecord& r, const QString& issue) {
    const QString br = QStringLiteral("\r\n\r\n");
    return QStringLiteral("总共开出：%1 期 ").arg(r.hitCount) + br +
           QStringLiteral("历史遗漏最大值：%1 期").arg(r.maxGap) + br +
           QStringLiteral("历史遗漏平均值：%1 期").arg(r.avgGap) + br +
           QStringLiteral("最近一次的遗漏值：%1 期").arg(r.lastGap) + br + omission_CurTip(issue, r);
}

QString shortForm(const QString& head, const OmissionRecord& r) {
    return QStringLiteral("(") + head + QStringLiteral(")  ") +
           QStringLiteral("总共开出：%1 期").arg(r.hitCount);
}

}  // namespace

IssueChoice fill_QiShuCombo() {
    IssueChoice choice;
    {
        auto c = store_Query(QStringLiteral("select TOP 1 期号 from 历史记录 order by 期号 DESC"));
        if (c->recordCount() > 0) choice.text = c->value(0).toString();
    }
    auto c = store_Query(QStringLiteral("select TOP 50 期号 from 历史记录 order by 期号 DESC"));
    for (c->moveFirst(); !c->eof(); c->moveNext()) choice.items << c->value(0).toString();
    return choice;
}

void renumber_ZongQiHao(IssueNumber issue) {
    Transaction tx(store());
    auto c = store_Query(
        QStringLiteral("select 期号,总期号,遗漏数据 from 历史记录 where 期号<=%1 order by 期号 asc")
            .arg(issue));
    int counter = 0;
    for (c->moveFirst(); !c->eof(); c->moveNext()) {
        c->setValue(1, counter);
        c->setValue(2, 0);
        c->update();
        ++counter;
    }
    c->close();
}

OmissionTable calc_RedOmission(IssueNumber issue) {
    return calcOmission(issue, true);
}
OmissionTable calc_BlueOmission(IssueNumber issue) {
    return calcOmission(issue, false);
}

QRectF omission_GroupRect(double frameWidth, double frameHeight, int n, int count) {
    const double pitch = double(roundHalfEven(frameWidth / count));
    return QRectF(pitch * (n - 1) + 0.1 * pitch, 0.1 * frameHeight, 0.8 * pitch, 0.8 * frameHeight);
}

OmissionGroupLayout draw_OmissionGroup(double width, double height, const OmissionRecord& r,
                                       double ballSize) {
    const double W = width, H = height;
    OmissionGroupLayout g;
    g.caption = QRectF(0, H - 285, W, 285);
    g.rule = QRectF(0, H - 360, W, 15);
    const int m = std::max(r.allMax, r.maxGap);
    const double scaleMax = double(roundHalfEven((m + 1) * 1.1));
    const double plot = double(roundHalfEven(H - 360));
    auto bar = [&](double left, double barWidth, int v) {
        const double h = plot / scaleMax * v;
        return QRectF(left, plot - h, barWidth, h);
    };
    g.maxBar = bar(W * 30 / 500, W * 105 / 500, r.maxGap);
    g.avgBar = bar(W * 30 / 500, W * 105 / 500, r.avgGap);
    g.curBar = bar(W * 200 / 500, W * 240 / 500, r.curGap);
    g.overdue = r.avgGap < r.curGap;
    if (ballSize >= W) {
        g.ball = QRectF(0, g.curBar.top() - W, W, W);
    } else {
        g.ball = QRectF(g.curBar.center().x() - ballSize / 2, g.curBar.top() - ballSize, ballSize, ballSize);
    }
    return g;
}

QString omission_ClickText(int itemIndex, int n, const QString& issue, const OmissionRecord& r) {
    QString head;
    if (itemIndex == 0)
        head = QStringLiteral("红球号码") + ballText(n) + QStringLiteral(" (截止 ") + issue +
               QStringLiteral(" 期)");
    else
        head = (itemIndex == 1 ? QStringLiteral("蓝球号码") : QStringLiteral("红球号码")) + ballText(n) +
               QStringLiteral(" 截止 ") + issue + QStringLiteral(" 期");
    if (r.hitCount < 3) return shortForm(head, r);
    return head + QStringLiteral("\r\n") + QStringLiteral("_____________________") +
           QStringLiteral("\r\n\r\n") + countLines(r, issue);
}

QString omission_GroupTip(int itemIndex, int n, const QString& issue, const OmissionRecord& r) {
    const QString head =
        (itemIndex == 1 ? QStringLiteral("蓝球号码 ") : QStringLiteral("红球号码 ")) + ballText(n);
    if (r.hitCount < 3) return shortForm(head, r);
    return head + QStringLiteral("\r\n\r\n") + countLines(r, issue);
}

QString omission_MaxTip(const OmissionRecord& r) {
    return QStringLiteral("历史遗漏最大值：%1 期").arg(r.maxGap);
}
QString omission_AvgTip(const OmissionRecord& r) {
    return QStringLiteral("历史遗漏平均值：%1 期").arg(r.avgGap);
}
QString omission_CurTip(const QString& issue, const OmissionRecord& r) {
    return QStringLiteral("第") + issue + QStringLiteral("期遗漏值：%1 期").arg(r.curGap);
}

}  // namespace dovrex
