#include "screen/ticket_page.h"

#include <QStringList>
#include <cmath>

#include "domain/record_checks.h"
#include "screen/control_roles.h"
#include "screen/run_panel.h"
#include "screen/shared_state.h"
#include "screen/ticket_options.h"
#include "store/store.h"

namespace dovrex {

namespace {

TicketPageState& pipeline() {
    return shared().ticketPage;
}

}  // namespace

bool suoShuiSeZhiVisible() {
    return pipeline().shrinkFrame;
}

void set_SuoShuiSeZhiVisible(bool visible) {
    pipeline().shrinkFrame = visible;
    screen().ui_Set(role::FrameSuosuiSezi, QStringLiteral("visible"), visible);
}

void cmm_stop_MouseDown() {
    shared().tingZhi = 1;
}

IssueNumber get_BiaoGeQiHao() {
    const auto& grid = pipeline().grid;
    if (!grid || grid->recordCount() == 0) return 0;
    return grid->valueAt(0, grid->fieldIndex(QStringLiteral("期号"))).toInt();
}

std::shared_ptr<Cursor> touZhuBiao() {
    return pipeline().grid;
}

void clearTicketTable() {
    auto& grid = pipeline().grid;
    if (!grid) return;
    grid.reset();
    screen().ui_Grid(role::TDBGrid_RZ, nullptr);
}

void load_TouZhuBiao(IssueNumber issue) {
    auto& grid = pipeline().grid;
    if (grid) grid->close();
    // The grid reads the rows in view as it paints them; binding costs one count.
    grid = issue < 0
               ? store().pagedQuery(QStringLiteral("select * from 日志表 order by 期号 asc,序号 asc"))
               : store().pagedQuery(
                     QStringLiteral("select * from 日志表 where 期号=? order by 期号 asc,序号 asc"), {issue});
    screen().ui_Grid(role::TDBGrid_RZ, grid);
    static const QStringList hidden{QStringLiteral("ID"),       QStringLiteral("过滤标记"),
                                    QStringLiteral("缩水标记"), QStringLiteral("精选标记"),
                                    QStringLiteral("临时数据"), QStringLiteral("缩水公式")};
    QStringList captions;
    QList<int> widths;
    for (int i = 0; i < grid->fieldCount(); ++i) {
        captions << grid->fieldName(i);
        widths << (hidden.contains(grid->fieldName(i), Qt::CaseInsensitive) ? 0 : -1);
    }
    screen().ui_DressGrid(role::TDBGrid_RZ, captions, widths);
}

void delete_TouZhu(IssueNumber issue) {
    if (issue == 0)
        store_Execute(QStringLiteral("DELETE FROM 日志表 "));
    else
        store_Execute(QStringLiteral("DELETE FROM 日志表 WHERE 期号=?"), {issue});
    load_TouZhuBiao(issue);
    log_Append(msg::kDeleteLogged);
}

QString import_InputError(const TicketImportOptions& options) {
    if (options.daoRuGeShi == TicketImportOptions::kIssueAndNumbers) return {};
    if (options.daoRuGeShi == TicketImportOptions::kNumbersOnly && options.daoRuQiHao.size() != 7)
        return msg::kNeedSevenDigitIssue;
    return issueFault(readIssue(options.daoRuQiHao));
}

int readIssue(const QString& answer) {
    // The number at the head of the text, as the old Val() reads it: blanks are skipped anywhere,
    // one decimal point, an exponent; reading stops at the first other character.
    const QString text = QStringLiteral("0") + answer.trimmed().left(7);
    QString digits;
    bool point = false;
    int i = 0;
    for (; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c == u' ' || c == u'\t' || c == u'\n' || c == u'\r') continue;
        if (c >= u'0' && c <= u'9') {
            digits += c;
        } else if (c == u'.' && !point) {
            point = true;
            digits += c;
        } else {
            break;
        }
    }
    if (i < text.size() && (text[i] == u'e' || text[i] == u'E' || text[i] == u'd' || text[i] == u'D')) {
        QString exponent;
        int j = i + 1;
        if (j < text.size() && (text[j] == u'+' || text[j] == u'-')) exponent += text[j++];
        for (; j < text.size() && text[j].isDigit() && text[j] <= u'9'; ++j) exponent += text[j];
        if (exponent.size() > 0 && exponent.back().isDigit()) digits += QStringLiteral("e") + exponent;
    }
    const double value = digits.toDouble();
    if (!std::isfinite(value) || value > INT32_MAX) return 0;
    return int(roundHalfEven(value));
}

}  // namespace dovrex
