#include "headless/results_headless.h"

#include "headless/headless_runner.h"
#include "pipeline/random_pick.h"
#include "pipeline/ticket_merge.h"
#include "results/prize_check.h"
#include "results/ticket_export.h"
#include "results/ticket_import.h"
#include "screen/shared_state.h"
#include "screen/ticket_page.h"

#include <QRegularExpression>

namespace dovrex {

bool headless_AnswerToFile(HeadlessRunner& r, const HeadlessArgs& a) {
    const QString usage =
        QStringLiteral("answer-tofile cancel | <4 switches, e.g. 0010> [<preset>|<red> <blue>]");
    if (a.words.value(0) == QLatin1String("cancel")) {
        r.screen().answerToFile(std::nullopt);
        return true;
    }
    const QString switches = a.words.value(0);
    if (switches.size() != 4 || switches.contains(QRegularExpression(QStringLiteral("[^01]"))))
        return r.fail(usage);
    TicketExportOptions o = export_LastOptions();
    for (int i = 0; i < 4; ++i) o.daoChuXuanXiang[size_t(i)] = switches[i] == u'1';
    if (a.words.size() == 2) {
        if (!export_ApplyPreset(a.words[1], o) || a.words[1].contains(QStringLiteral("其他")))
            return r.fail(QStringLiteral("presets: 淘宝, 财付通"));
    } else if (a.words.size() == 3) {
        o.hongJianGe = export_SeparatorText(a.words[1]);
        o.hongLanJianGe = export_SeparatorText(a.words[2]);
    } else if (a.words.size() > 3) {
        return r.fail(usage);
    }
    r.screen().answerToFile(o);
    return true;
}

bool headless_AnswerFromFile(HeadlessRunner& r, const HeadlessArgs& a) {
    if (a.words.value(0) == QLatin1String("cancel")) {
        r.screen().answerFromFile(std::nullopt);
        return true;
    }
    TicketImportOptions o;
    if (!a.intAt(r, 0, o.daoRuGeShi)) return false;
    if (o.daoRuGeShi < 0 || o.daoRuGeShi > 2) return r.fail(QStringLiteral("layouts are 0, 1 and 2"));
    o.daoRuQiHao = a.words.size() > 1 ? a.words[1] : import_DefaultIssue();
    r.screen().answerFromFile(o);
    return true;
}

bool headless_Export(HeadlessRunner& r, const HeadlessArgs& a) {
    int issue = 0;
    if (!r.requireStore() || !a.issueAt(r, 0, issue)) return false;
    const int n = export_HaoMa(issue);
    r.print(n < 0 ? QStringLiteral("cancelled") : QStringLiteral("exported %1").arg(n));
    return true;
}

bool headless_Import(HeadlessRunner& r, const HeadlessArgs& a) {
    if (!r.requireStore()) return false;
    if (a.text.isEmpty()) return r.fail(QStringLiteral("import <file>"));
    r.print(QStringLiteral("imported %1").arg(import_HaoMa(a.text)));
    return true;
}

bool headless_Check(HeadlessRunner& r, const HeadlessArgs& a) {
    int issue = 0, drawIssue = 0;  // the draw: the tickets' own issue unless a second word names one
    if (!r.requireStore() || !a.issueAt(r, 0, issue)) return false;
    if (a.words.size() > 1 && !a.issueAt(r, 1, drawIssue)) return false;
    r.print(QStringLiteral("best %1").arg(check_KaiJiang(issue, drawIssue)));
    for (const QString& line : prize_MoneyLines(prize_MoneyOfChecked(issue, drawIssue))) r.print(line);
    return true;
}

bool headless_Merge(HeadlessRunner& r, const HeadlessArgs&) {
    if (!r.requireStore()) return false;
    const int left = hebingxt_Click();
    if (left < 0) return r.fail(QStringLiteral("store error"));
    r.print(QStringLiteral("left %1").arg(left));
    return true;
}

bool headless_JiXuan(HeadlessRunner& r, const HeadlessArgs& a) {
    const int count = jiXuan_ZhuShu(a.words.value(0));
    uint64_t seed = JiXuanDraw::clockSeed();
    if (a.words.size() > 1) {
        bool ok = false;
        seed = a.words[1].toULongLong(&ok);
        if (!ok) return r.fail(QStringLiteral("not a seed: ") + a.words[1]);
    }
    JiXuanDraw draw(count, seed);
    int ticket = 0, column = 0;
    while (draw.next(ticket, column)) {
    }
    r.lastJiXuan = draw.hao();
    if (count == 0) r.print(QStringLiteral("closed"));
    for (const QString& line : jiXuan_Text(draw.hao()).split(u'\n', Qt::SkipEmptyParts)) r.print(line);
    return true;
}

bool headless_JiXuanExport(HeadlessRunner& r, const HeadlessArgs&) {
    jiXuan_Export(r.lastJiXuan);
    return true;
}

}  // namespace dovrex
