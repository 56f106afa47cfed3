#include "analysis/combination_omission.h"

#include <algorithm>
#include <vector>

#include "analysis/jindu.h"
#include "history/history_queries.h"
#include "screen/shared_state.h"
#include "store/store.h"

namespace dovrex {

namespace {

const QString kFenBu = QStringLiteral("TBLhmYLTJfenbu");
const QString kZhuHe = QStringLiteral("TBLyilouZhuhe");

// The issues of 历史记录 in ascending order: count_Between as index arithmetic.
class IssueIndex {
  public:
    IssueIndex() {
        auto c = store_Query(QStringLiteral("select 期号 from 历史记录 order by 期号 asc"));
        issues_.reserve(size_t(c->recordCount()));
        for (c->moveFirst(); !c->eof(); c->moveNext()) issues_.push_back(c->intValue(0));
    }
    int between(IssueNumber a, IssueNumber b) const {
        const auto lo = std::upper_bound(issues_.begin(), issues_.end(), a);
        const auto hi = std::lower_bound(issues_.begin(), issues_.end(), b);
        return hi > lo ? int(hi - lo) : 0;
    }

  private:
    std::vector<IssueNumber> issues_;
};

// One row of TBLhmYLTJfenbu: its issue and the numbers it holds as bits.
struct FenBuRow {
    IssueNumber issue;
    quint64 mask;
};

std::vector<FenBuRow> readFenBu() {
    std::vector<FenBuRow> rows;
    auto c = store_Query(QStringLiteral("select * from TBLhmYLTJfenbu order by 期号 asc"));
    std::array<int, kRedCount + 1> col{};
    for (int n = 1; n <= kRedCount; ++n) col[size_t(n)] = c->fieldIndex(twoDigits(n));
    const int issueCol = c->fieldIndex(QStringLiteral("期号"));
    rows.reserve(size_t(c->recordCount()));
    for (c->moveFirst(); !c->eof(); c->moveNext()) {
        quint64 mask = 0;
        for (int n = 1; n <= kRedCount; ++n) {
            const QVariant v = c->value(col[size_t(n)]);
            if (!v.isNull() && v.toInt() == n) mask |= quint64(1) << n;
        }
        rows.push_back({c->intValue(issueCol), mask});
    }
    return rows;
}

int calcZhuHe(int size, myJinDuCTL& progress) {
    if (!screen().ui_Confirm(QStringLiteral("由于计算的数据量比较大，点击'确定'按钮后请耐心等待一会！"),
                             ConfirmButtons::OkCancel))
        return -1;
    const std::vector<FenBuRow> rows = readFenBu();
    const int total = int(rows.size());
    const IssueNumber latest = latest_QiHao();
    const IssueIndex index;

    std::vector<std::vector<int>> groups;
    if (size == 2) {
        for (int a = 1; a <= 32; ++a)
            for (int b = a + 1; b <= 33; ++b) groups.push_back({a, b});
    } else {
        for (int a = 1; a <= 31; ++a)
            for (int b = a + 1; b <= 32; ++b)
                for (int c = b + 1; c <= 33; ++c) groups.push_back({a, b, c});
    }

    progress.show(QStringLiteral("正在统计，请稍候．．．"), 0, int(groups.size()));
    Transaction tx(store());
    auto out = store_Query(QStringLiteral("select * from TBLyilouZhuhe"));
    int written = 0;
    std::vector<IssueNumber> hits;
    for (const auto& g : groups) {
        screen().ui_Pump();
        if (progress.Tingzhi() || shared().tingZhi) break;
        quint64 want = 0;
        QStringList name;
        for (int n : g) {
            want |= quint64(1) << n;
            name << twoDigits(n);
        }
        hits.clear();
        for (const auto& r : rows)
            if ((r.mask & want) == want) hits.push_back(r.issue);
        const int count = int(hits.size());

        out->addNew();
        out->setValue(QStringLiteral("Haoma"), name.join(u','));
        if (count < 1) {
            out->setValue(QStringLiteral("YilouTotal"), 0);
            out->setValue(QStringLiteral("YilouQS"), total);
            out->setValue(QStringLiteral("YilouAvg"), 0);
            out->setValue(QStringLiteral("YilouPre"), 0);
            out->setValue(QStringLiteral("YilouLongest"), 0);
        } else {
            const IssueNumber last = hits.back();
            int longest = 0;
            for (int i = 1; i < count; ++i)
                longest = std::max(longest, index.between(hits[size_t(i - 1)], hits[size_t(i)]));
            out->setValue(QStringLiteral("YilouTotal"), count);
            out->setValue(QStringLiteral("YilouQS"), index.between(last, latest + 1));
            out->setValue(QStringLiteral("YilouAvg"), double(total) / double(count));
            out->setValue(QStringLiteral("YilouPre"),
                          count > 1 ? index.between(hits[size_t(count - 2)], last) : 0);
            out->setValue(QStringLiteral("YilouLongest"), longest);
        }
        out->update();
        ++written;
        progress.step();
    }
    out->close();
    progress.hide();
    return written;
}

}  // namespace

void ensureCombinationTables() {
    Store& s = store();
    if (!s.tableExists(kFenBu))
        s.execute(QStringLiteral("create table ") + kFenBu + QStringLiteral("(期号 long)"));
    const QStringList have = s.columnNames(kFenBu);
    for (int n = 1; n <= kRedCount; ++n)
        if (!have.contains(twoDigits(n)))
            s.execute(QStringLiteral("ALTER TABLE ") + kFenBu + QStringLiteral(" ADD COLUMN [") +
                      twoDigits(n) + QStringLiteral("] long"));
    if (!s.tableExists(kZhuHe))
        s.execute(QStringLiteral("create table ") + kZhuHe +
                  QStringLiteral("(Haoma varchar(255),YilouQS long,YilouAvg long,YilouPre long,YilouLongest "
                                 "long,YilouTotal long)"));
}

int build_FenBuBiao(myJinDuCTL& progress) {
    progress.show(QStringLiteral("正在打开，请稍候．．．"), 1, 2);
    const QString names = QStringLiteral("期号 红球1 红球2 红球3 红球4 红球5 红球6");
    auto draws = store_Query(QStringLiteral("select ") + QString(names).replace(u' ', u',') +
                             QStringLiteral(" from 历史记录 order by 期号 asc"));
    if (draws->recordCount() == 0) {
        progress.hide();
        return 0;
    }
    Transaction tx(store());
    auto out = store_Query(QStringLiteral("select * from TBLhmYLTJfenbu"));
    progress.setMaxJindu(draws->recordCount());
    int done = 0;
    for (draws->moveFirst(); !draws->eof(); draws->moveNext()) {
        screen().ui_Pump();
        if (progress.Tingzhi() || shared().tingZhi) break;
        out->addNew();
        out->setValue(QStringLiteral("期号"), draws->value(0));
        for (int b = 1; b <= 6; ++b) {
            const int ball = draws->intValue(b);
            if (ball >= 1 && ball <= kRedCount) out->setValue(twoDigits(ball), ball);
        }
        out->update();
        ++done;
        progress.step();
    }
    out->close();
    progress.hide();
    return done;
}

int count_Between(IssueNumber issueA, IssueNumber issueB) {
    return store_Query(
               QStringLiteral("select  期号 from 历史记录 where 期号>%1 and 期号<%2 order by 期号 DESC")
                   .arg(issueA)
                   .arg(issueB))
        ->recordCount();
}

int calc_ZhuHe2(myJinDuCTL& progress) {
    return calcZhuHe(2, progress);
}
int calc_ZhuHe3(myJinDuCTL& progress) {
    return calcZhuHe(3, progress);
}

int runCombinationOmission(int size, myJinDuCTL& progress) {
    ensureCombinationTables();
    store_ClearTable(kFenBu);
    build_FenBuBiao(progress);
    store_ClearTable(kZhuHe);
    return size == 3 ? calc_ZhuHe3(progress) : calc_ZhuHe2(progress);
}

std::shared_ptr<Cursor> openCombinationOmissionTable() {
    return store_Query(
        QStringLiteral("select * from TBLyilouZhuhe order by YilouQS desc,YilouPre desc,YilouAvg asc"));
}

QString zhuHeYLTJ_Title() {
    return to_QuanJiao(QStringLiteral("截止") + QString::number(latest_QiHao()) + QStringLiteral("期") +
                       QStringLiteral("号码组合遗漏统计表"));
}

}  // namespace dovrex
