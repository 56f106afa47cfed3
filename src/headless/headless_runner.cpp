#include "headless/headless_runner.h"

#include <QDir>
#include <QFileInfo>

#include "app/app_flow.h"
#include "domain/date_value.h"
#include "domain/record_checks.h"
#include "headless/calendar_headless.h"
#include "headless/filter_headless.h"
#include "headless/history_headless.h"
#include "headless/pipeline_headless.h"
#include "headless/replay_headless.h"
#include "headless/results_headless.h"
#include "headless/shrink_headless.h"
#include "headless/users_headless.h"
#include "history/derived_columns.h"
#include "screen/shared_state.h"
#include "screen/ticket_page.h"
#include "store/jet_sql.h"
#include "store/store.h"

namespace dovrex {

namespace {

QString cellText(const QVariant& v) {
    if (v.isNull()) return QStringLiteral("NULL");
    if (v.typeId() == QMetaType::Double) return QString::number(v.toDouble(), 'g', 15);
    return ScriptedScreen::oneLine(v.toString());
}

bool cmdOpenFolder(HeadlessRunner& r, const HeadlessArgs& a) {
    return r.openFolder(a.words.value(0), a.words.value(1));
}

bool cmdOpenStore(HeadlessRunner& r, const HeadlessArgs& a) {
    if (a.text.isEmpty()) return r.fail(QStringLiteral("open-store needs a store file"));
    return r.openStore(a.text);
}

bool cmdToday(HeadlessRunner& r, const HeadlessArgs& a) {
    const auto day = parseDateText(a.text);
    if (!day) return r.fail(QStringLiteral("not a date: ") + a.text);
    Clock::setToday(toQDate(*day));
    return true;
}

bool cmdAnswer(HeadlessRunner& r, const HeadlessArgs& a) {
    const QString kind = a.words.value(0);
    const QString rest = a.text.mid(kind.size()).trimmed();
    if (kind == QLatin1String("yes") || kind == QLatin1String("no"))
        r.screen().answerConfirm(kind == QLatin1String("yes"));
    else if (kind == QLatin1String("text"))
        r.screen().answerText(rest);
    else if (kind == QLatin1String("file"))
        r.screen().answerFile(rest);
    else
        return r.fail(QStringLiteral("answer yes|no|text <t>|file <path>"));
    return true;
}

bool cmdStopAfter(HeadlessRunner& r, const HeadlessArgs& a) {
    int n = 0;
    if (!a.intAt(r, 0, n)) return false;
    shared().tingZhi = 0;
    r.screen().stopAfterPumps(n);
    return true;
}

bool cmdCloseAfter(HeadlessRunner& r, const HeadlessArgs& a) {
    int n = 0;
    if (!a.intAt(r, 0, n)) return false;
    r.screen().closeAfterPumps(n);
    return true;
}

bool cmdSql(HeadlessRunner& r, const HeadlessArgs& a) {
    if (!r.requireStore()) return false;
    if (!translateJetSql(a.text).isSelect) {
        r.print(QStringLiteral("changed %1").arg(store_Execute(a.text)));
        return true;
    }
    auto c = store_Query(a.text);
    QStringList cells;
    for (int i = 0; i < c->fieldCount(); ++i) cells << c->fieldName(i);
    r.print(cells.join(u'\t'));
    for (; !c->eof(); c->moveNext()) {
        cells.clear();
        for (int i = 0; i < c->fieldCount(); ++i) cells << cellText(c->value(i));
        r.print(cells.join(u'\t'));
    }
    return true;
}

bool cmdStatus(HeadlessRunner& r, const HeadlessArgs&) {
    if (!r.requireStore()) return false;
    r.print(history_Status() ? QStringLiteral("stale") : QStringLiteral("up to date"));
    return true;
}

bool cmdRecalc(HeadlessRunner& r, const HeadlessArgs& a) {
    int from = 0, to = 0;
    if (!r.requireStore() || !a.intAt(r, 0, from) || !a.intAt(r, 1, to)) return false;
    recalc_LiShiLie(from, to, true);
    return true;
}

bool cmdLog(HeadlessRunner& r, const HeadlessArgs&) {
    for (const QString& line : shared().operationLog.split(u'\n')) r.print(line);
    return true;
}

bool cmdSave(HeadlessRunner& r, const HeadlessArgs&) {
    return r.save();
}

bool cmdCheckpoint(HeadlessRunner& r, const HeadlessArgs& a) {
    if (a.words.isEmpty()) return r.save();
    int seconds = 0;
    if (a.words.value(0) != QLatin1String("every") || !a.intAt(r, 1, seconds) || seconds < 0)
        return r.fail(QStringLiteral("checkpoint [every <seconds>]"));
    r.setCheckpointInterval(qint64(seconds) * 1000);
    return true;
}

bool cmdStoreSizeLimit(HeadlessRunner& r, const HeadlessArgs& a) {
    int bytes = 0;
    if (!a.intAt(r, 0, bytes) || bytes < 0) return r.fail(QStringLiteral("store-size-limit <bytes>"));
    r.setStoreSizeLimit(bytes);
    return true;
}

bool cmdExit(HeadlessRunner& r, const HeadlessArgs&) {
    return r.exit();
}

bool cmdHelp(HeadlessRunner& r, const HeadlessArgs&) {
    for (const auto& c : headlessCommands())
        r.print(QStringLiteral("%1 %2").arg(QLatin1String(c.name), QLatin1String(c.usage)).trimmed());
    return true;
}

}  // namespace

const QList<HeadlessCommand>& headlessCommands() {
    static const QList<HeadlessCommand> commands{
        {"open-folder", "[<program folder> [<temp folder>]]", cmdOpenFolder},
        {"open-store", "<store file>", cmdOpenStore},
        {"today", "yyyy/mm/dd", cmdToday},
        {"answer", "yes|no|text <t>|file <path>", cmdAnswer},
        {"stop-after", "<n>", cmdStopAfter},
        {"close-after", "<n>", cmdCloseAfter},
        {"sql", "<statement>", cmdSql},
        {"status", "", cmdStatus},
        {"recalc", "<from> <to>", cmdRecalc},
        {"log", "", cmdLog},
        {"save", "", cmdSave},
        {"checkpoint", "[every <seconds>]", cmdCheckpoint},
        {"store-size-limit", "<bytes>", cmdStoreSizeLimit},
        {"exit", "", cmdExit},
        {"help", "", cmdHelp},
        {"draw-add", "<issue> <yyyy/mm/dd> <r1> .. <r6> <blue>", headless_DrawAdd},
        {"draw-delete", "[<issue>]", headless_DrawDelete},
        {"draw-search", "<column>=<text>...", headless_DrawSearch},
        {"download", "[<url>]", headless_Download},
        {"lookup", "[<issue>]", headless_Lookup},
        {"download-file", "<file>", headless_DownloadFile},
        {"mirrors", "[<url1> <url2> <url3>]", headless_Mirrors},
        {"pick", "<0|1|2> <id|a-b>...", headless_Pick},
        {"click", "<button index>", headless_Click},
        {"mode", "red|blue <1 drag|2 banker>", headless_Mode},
        {"clear-picks", "red|blue", headless_ClearPicks},
        {"picks", "", headless_Picks},
        {"condition", "<value> <id|a-b>...", headless_Condition},
        {"switch", "<n|a-b>... on|off", headless_Switch},
        {"init", "<issue>", headless_Init},
        {"filter", "[<issue>]", headless_Filter},
        {"delete", "[<issue>]", headless_Delete},
        {"command", "<0..7>", headless_Command},
        {"space", "<0|1>", headless_Space},
        {"space-count", "[<issue>]", headless_SpaceCount},
        {"shrink", "<3..7> [<issue>]", headless_Shrink},
        {"shrink-opt", "<3..7> [<seconds>] [<issue>]", headless_ShrinkOptimised},
        {"coverage", "[<issue>]", headless_Coverage},
        {"select", "<n> [<issue>]", headless_Select},
        {"weights", "[<preset 0..10> | <n>=<value>]...", headless_Weights},
        {"user-mode", "[1|2]", headless_UserMode},
        {"login", "<name> [<password>]", headless_Login},
        {"users", "", headless_Users},
        {"export-conditions", "<file>", headless_ExportConditions},
        {"import-conditions", "<file>", headless_ImportConditions},
        {"restore-defaults", "", headless_RestoreDefaults},
        {"history-filter", "on|off [<low> <high> <match>]", headless_HistoryFilter},
        {"backtest", "<from issue> <to issue>", headless_Backtest},
        {"replay", "<from> <to> [<seed>] [select <n>] [budget <seconds>]", headless_Replay},
        {"tolerance", "<0..20>", headless_Tolerance},
        {"group-preset", "[<group 1..20> <item>]", headless_GroupPreset},
        {"lunar", "<yyyy/mm/dd>", headless_Lunar},
        {"almanac", "<year>", headless_Almanac},
        {"bazi", "<yyyy/mm/dd> [<hh:mm>]", headless_Bazi},
        {"answer-tofile", "cancel | <switches 0010> [<preset>|<red sep> <blue sep>]", headless_AnswerToFile},
        {"answer-fromfile", "cancel | <layout 0..2> [<issue>]", headless_AnswerFromFile},
        {"export", "[<issue>]", headless_Export},
        {"import", "<file>", headless_Import},
        {"check", "[<issue>]", headless_Check},
        {"merge", "", headless_Merge},
        {"jixuan", "<count> [<seed>]", headless_JiXuan},
        {"jixuan-export", "", headless_JiXuanExport},
        // Commands of the pipeline, filters, analysis ... go here, one line each.
    };
    return commands;
}

bool HeadlessArgs::issueAt(HeadlessRunner& runner, int i, int& issue) const {
    if (words.size() <= i) {
        issue = get_BiaoGeQiHao();
        return true;
    }
    if (!intAt(runner, i, issue)) return false;
    if (const QString fault = issueFault(issue); !fault.isEmpty()) {
        runner.screen().ui_Message(fault, MessageKind::Warning);
        return runner.fail(fault);
    }
    return true;
}

bool HeadlessArgs::intAt(HeadlessRunner& runner, int i, int& value) const {
    bool ok = false;
    value = words.value(i).toInt(&ok);
    if (!ok) runner.fail(QStringLiteral("argument %1 is not a number: '%2'").arg(i + 1).arg(words.value(i)));
    return ok;
}

HeadlessRunner::HeadlessRunner(std::function<void(const QString&)> out) : out_(std::move(out)) {
    screen_.listener = [this](const QString& line) { print(line); };
    screen_.closeRequested = [this] { requestClose(); };
    previousScreen_ = shared().screen;
    shared().screen = &screen_;
}

HeadlessRunner::~HeadlessRunner() {
    closeAll();
    if (shared().screen == &screen_) shared().screen = previousScreen_;
}

void HeadlessRunner::print(const QString& line) {
    if (out_) out_(line);
}

bool HeadlessRunner::fail(const QString& why) {
    print(QStringLiteral("FAILED ") + why);
    return false;
}

bool HeadlessRunner::requireStore() {
    if (shared().g_Store) return true;
    return fail(QStringLiteral("no store is open (open-folder or open-store first)"));
}

int HeadlessRunner::runScript(const QString& script) {
    QString copy = script;
    QTextStream in(&copy, QIODevice::ReadOnly);
    return runScript(in);
}

int HeadlessRunner::runScript(QTextStream& in) {
    while (!finished_ && !in.atEnd())
        if (!runLine(in.readLine())) return 1;
    return 0;
}

bool HeadlessRunner::runLine(const QString& raw) {
    const QString line = raw.trimmed();
    if (line.isEmpty() || line.startsWith(u'#')) return true;
    print(QStringLiteral("> ") + line);
    const QString name = line.section(u' ', 0, 0);
    HeadlessArgs args;
    args.text = line.mid(name.size()).trimmed();
    args.words = args.text.split(u' ', Qt::SkipEmptyParts);
    for (const auto& c : headlessCommands()) {
        if (name != QLatin1String(c.name)) continue;
        const bool ok = runCommand(c, args);
        // A close came while the command ran: it has stopped and returned, so the store can go.
        if (screen_.closing) return closeNow();
        checkpoint();
        return ok;
    }
    return fail(QStringLiteral("unknown command '%1' (help lists them)").arg(name));
}

bool HeadlessRunner::runCommand(const HeadlessCommand& command, const HeadlessArgs& args) {
    try {
        return command.run(*this, args);
    } catch (const StoreWriteError& e) {
        screen_.ui_Message(e.text, MessageKind::Error);
        return fail(QStringLiteral("the store was not written"));
    } catch (const StoreError& e) {
        return fail(QStringLiteral("store error: ") + e.text);
    } catch (const std::exception& e) {
        return fail(QString::fromUtf8(e.what()));
    }
}

void HeadlessRunner::requestClose() {
    // Asked as the window's close box asks; on yes the running pass stops at its next yield.
    if (screen_.closing || !screen_.ui_Confirm(msg::kConfirmExit)) return;
    screen_.closing = true;
    shared().tingZhi = 1;
}

bool HeadlessRunner::closeNow() {
    screen_.closing = false;
    shared().tingZhi = 0;
    const bool saved = !flow_ || flow_->saveAndClose();
    return finishExit(saved);
}

bool HeadlessRunner::openFolder(const QString& programDir, const QString& tempDir) {
    if (shared().g_Store) return fail(QStringLiteral("a store is open already"));
    const AppPaths standard = AppPaths::standard(programDir.isEmpty());
    const QString canonical = QFileInfo(programDir).canonicalFilePath();
    const bool own =
        programDir.isEmpty() ||
        (!canonical.isEmpty() && canonical == QFileInfo(standard.programDir).canonicalFilePath());
    AppPaths paths;
    paths.programDir = programDir.isEmpty() ? standard.programDir : QFileInfo(programDir).absoluteFilePath();
    if (!tempDir.isEmpty()) {
        paths.tempDir = QFileInfo(tempDir).absoluteFilePath();
    } else if (own) {
        // The program's own folder: share its temporary folder, as a second program would.
        paths.tempDir = standard.tempDir;
    } else {
        ownTemp_ = std::make_unique<QTemporaryDir>();
        paths.tempDir = ownTemp_->path();
    }
    flow_ = std::make_unique<AppFlow>(paths);
    flow_->setCheckpointInterval(checkpointIntervalMs_);
    if (storeSizeLimit_ >= 0) flow_->setStoreSizeLimit(storeSizeLimit_);
    // The program's own folder starts as the program starts: whatever it lacks is copied from the
    // data shipped beside the executable.
    const StartOutcome outcome = flow_->start(false, own ? AppPaths::shippedDataDir() : QString());
    if (outcome == StartOutcome::Ready) return true;
    screen_.ui_Message(startMessage(outcome), MessageKind::Error);
    flow_.reset();
    return fail(QStringLiteral("the program folder did not open"));
}

bool HeadlessRunner::openStore(const QString& file) {
    if (shared().g_Store) return fail(QStringLiteral("a store is open already"));
    bareStore_ = Store::open(file);
    shared().g_Store = bareStore_.get();
    return true;
}

bool HeadlessRunner::save() {
    if (!requireStore()) return false;
    if (!flow_) return true;
    const QString failure = saveMessage(flow_->save());
    if (failure.isEmpty()) return true;
    screen_.ui_Message(failure, MessageKind::Error);
    return fail(QStringLiteral("the pack could not be written"));
}

void HeadlessRunner::checkpoint() {
    // What a command left is packed as the window does when it is idle again; a failed command
    // keeps what it wrote, so it counts too.
    if (!flow_ || !shared().g_Store) return;
    const QString failure = saveMessage(flow_->checkpoint());
    if (!failure.isEmpty()) screen_.ui_Message(failure, MessageKind::Error);
}

void HeadlessRunner::setCheckpointInterval(qint64 ms) {
    checkpointIntervalMs_ = ms;
    if (flow_) flow_->setCheckpointInterval(ms);
}

bool HeadlessRunner::exit() {
    bool saved = true;
    if (flow_) {
        bool cancel = false;
        saved = flow_->app_Unload(cancel);
        if (cancel) return true;  // the user said no: work goes on
        if (!saved) screen_.ui_Message(saveMessage(flow_->lastSave()), MessageKind::Error);
    }
    return finishExit(saved);
}

bool HeadlessRunner::finishExit(bool saved) {
    flow_.reset();
    closeAll();
    finished_ = true;
    if (!saved)
        return fail(QStringLiteral("the pack could not be written; the program folder keeps its last pack"));
    return true;
}

void HeadlessRunner::closeAll() {
    // A folder still open here was never left by `exit`: like a crash, its pack stays as it was.
    flow_.reset();
    if (bareStore_ && shared().g_Store == bareStore_.get()) {
        shared().g_Store = nullptr;
        shared().g_HistoryCursor.reset();
    }
    bareStore_.reset();
    ownTemp_.reset();
}

}  // namespace dovrex
