#include "history/history_display.h"

#include <QVariantMap>

#include "screen/control_roles.h"
#include "screen/shared_state.h"
#include "store/store.h"

namespace dovrex {

namespace {

// Colours are written as the grid has always had them, blue-green-red (0xBBGGRR); the screen gets
// them as 0xRRGGBB.
int fromBgr(int bgr) {
    return ((bgr & 0xFF) << 16) | (bgr & 0xFF00) | ((bgr >> 16) & 0xFF);
}

QVariantList colourPair(int backBgr, int foreBgr) {
    return {fromBgr(backBgr), fromBgr(foreBgr)};
}

}  // namespace

HistoryShowMode read_HistoryShowMode() {
    const QVariant v =
        store().scalar(QStringLiteral("select VALUE from 过滤条件 where ID=%1").arg(kHistoryShowConditionId));
    return v.toInt() == 1 ? HistoryShowMode::Newest100 : HistoryShowMode::All;
}

void write_HistoryShowMode(HistoryShowMode mode) {
    auto rs = store_Query(QStringLiteral("select * from 过滤条件 where ID=%1").arg(kHistoryShowConditionId));
    if (rs->eof()) {
        rs->addNew();
        rs->setValue(QStringLiteral("ID"), kHistoryShowConditionId);
    }
    rs->setValue(QStringLiteral("VALUE"), int(mode));
    rs->update();
}

std::shared_ptr<Cursor> show_LiShi(bool all) {
    if (shared().g_HistoryCursor) shared().g_HistoryCursor->close();
    shared().g_HistoryCursor.reset();
    std::shared_ptr<Cursor> rs;
    if (all) {
        rs = store().pagedQuery(QStringLiteral("SELECT  * FROM 历史记录  ORDER BY 期号 ASC"));
    } else {
        auto top = store_Query(QStringLiteral("SELECT TOP 100 期号 FROM 历史记录 ORDER BY 期号 DESC"));
        qint64 newest = 0, oldest = 0;
        if (!top->eof()) {
            top->moveFirst();
            newest = top->value(0).toLongLong();
            top->moveLast();
            oldest = top->value(0).toLongLong();
        }
        rs = store_Query(
            QStringLiteral("SELECT  * FROM 历史记录 WHERE 期号>=%1 AND 期号<=%2 ORDER BY 期号 ASC")
                .arg(oldest)
                .arg(newest));
    }
    shared().g_HistoryCursor = rs;
    screen().ui_Grid(role::TDBGridHistory, rs);
    dress_HistoryGrid(*rs);
    if (rs->recordCount() > 0) {
        rs->moveLast();
        screen().ui_Set(role::TDBGridHistory, QStringLiteral("row"), rs->recordCount() - 1);
    }
    return rs;
}

std::shared_ptr<Cursor> show_LiShi() {
    return show_LiShi(read_HistoryShowMode() == HistoryShowMode::All);
}

void dress_HistoryGrid(const Cursor& cursor) {
    QStringList captions;
    QList<int> widths;
    QVariantMap colours;
    for (int i = 0; i < cursor.fieldCount(); ++i) {
        const QString name = cursor.fieldName(i);
        captions << name;
        int width = -1;
        if (name == QStringLiteral("已完成") || name == QStringLiteral("总期号") ||
            name == QStringLiteral("遗漏数据"))
            width = 0;
        else if (name == QStringLiteral("期号"))
            width = 1125;
        else if (name == QStringLiteral("开奖日期"))
            width = 1410;
        else if (name == QStringLiteral("连号"))
            width = 735;
        widths << width;

        if (name == QStringLiteral("期号") || name == QStringLiteral("开奖日期"))
            colours.insert(name, colourPair(0xC0FFFF, 0x000000));
        else if (i >= 2 && i <= 7)
            colours.insert(name, colourPair(0xFFFFFF, 0x0000FF));
        else if (i == 8)
            colours.insert(name, colourPair(0xFFFFFF, 0xFF0000));
    }
    screen().ui_DressGrid(role::TDBGridHistory, captions, widths);
    screen().ui_Set(role::TDBGridHistory, QStringLiteral("columnColors"), colours);
}

}  // namespace dovrex
