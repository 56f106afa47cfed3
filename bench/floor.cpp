#include "floor.h"

#include <QElapsedTimer>
#include <QTextStream>
#include <bit>
#include <cstdint>
#include <vector>

#include "screen/prepared.h"
#include "screen/shared_state.h"
#include "store/store.h"

namespace bench {

namespace {

double msSince(const QElapsedTimer& t) {
    return double(t.nsecsElapsed()) / 1e6;
}

struct Row {
    long long rowid;
    int serial;
    int balls[7];
};

constexpr int kSpareIssue = 1;  // no draw has it

}  // namespace

Floor measureFloor(int issue, int t) {
    using dovrex::Prepared;
    Floor f;
    std::vector<Row> rows;
    QElapsedTimer clock;
    clock.start();
    {
        Prepared read(
            QStringLiteral("SELECT rowid,序号,红球1,红球2,红球3,红球4,红球5,红球6,蓝球 FROM 日志表 "
                           "WHERE 期号=? ORDER BY 序号"));
        read.bind(1, issue);
        while (read.next()) {
            Row& r = rows.emplace_back();
            r.rowid = read.int64Column(0);
            r.serial = read.intColumn(1);
            for (int i = 0; i < 7; ++i) r.balls[i] = read.intColumn(2 + i);
        }
    }
    f.readMs = msSince(clock);
    f.tickets = int(rows.size());

    {
        dovrex::Transaction tx(dovrex::store());
        clock.restart();
        Prepared write(QStringLiteral("UPDATE 日志表 SET 临时数据=临时数据 WHERE rowid=?"));
        for (const Row& r : rows) write.bind(1, r.rowid).exec();
        f.writeMs = msSince(clock);
    }

    {
        dovrex::Transaction tx(dovrex::store());
        clock.restart();
        Prepared insert(
            QStringLiteral("INSERT INTO 日志表 (序号,期号,红球1,红球2,红球3,红球4,红球5,红球6,蓝球) "
                           "VALUES (?,?,?,?,?,?,?,?,?)"));
        for (const Row& r : rows) {
            insert.bind(1, r.serial).bind(2, kSpareIssue);
            for (int i = 0; i < 7; ++i) insert.bind(3 + i, r.balls[i]);
            insert.exec();
        }
        f.insertMs = msSince(clock);
        dovrex::store_Execute(QStringLiteral("DELETE FROM 日志表 WHERE 期号=?"), {kSpareIssue});
    }

    if (t > 0) {
        std::vector<std::uint64_t> masks;
        masks.reserve(rows.size());
        for (const Row& r : rows) {
            std::uint64_t m = 0;
            for (int i = 0; i < 6; ++i) m |= std::uint64_t(1) << r.balls[i];
            masks.push_back(m | std::uint64_t(1) << (34 + r.balls[6]));
        }
        clock.restart();
        std::vector<std::uint64_t> kept;
        for (std::uint64_t m : masks) {
            bool covered = false;
            for (std::uint64_t k : kept)
                if (std::popcount(m & k) >= t) {
                    covered = true;
                    break;
                }
            if (!covered) kept.push_back(m);
        }
        f.scanMs = msSince(clock);
    }
    return f;
}

void reportAgainst(const QString& figure, double ms, double floorMs, const QString& floorName) {
    QTextStream(stdout) << figure << ": " << QString::number(ms, 'f', ms < 10 ? 3 : 1) << " ms ("
                        << QString::number(floorMs > 0 ? ms / floorMs : 0, 'f', 2) << " x " << floorName
                        << ' ' << QString::number(floorMs, 'f', 1) << " ms)" << Qt::endl;
}

}  // namespace bench
