#include "widgets/pass_window.h"

#include <QAbstractButton>
#include <QHeaderView>
#include <QProgressBar>
#include <QSaveFile>
#include <QTableWidget>

#include "screen/shared_state.h"

namespace dovrex {

QTableWidget* makeResultTable(const QStringList& captions, QWidget* parent) {
    auto* t = new QTableWidget(0, int(captions.size()), parent);
    t->setHorizontalHeaderLabels(captions);
    t->setEditTriggers(QAbstractItemView::NoEditTriggers);
    t->setSelectionBehavior(QAbstractItemView::SelectRows);
    t->verticalHeader()->setVisible(false);
    t->horizontalHeader()->setStretchLastSection(true);
    return t;
}

RunningPass::RunningPass(QAbstractButton* start, QAbstractButton* stop, QProgressBar* bar)
    : start_(start), stop_(stop), bar_(bar) {
    shared().tingZhi = 0;
    start_->setEnabled(false);
    stop_->setEnabled(true);
    bar_->setVisible(true);
}

RunningPass::~RunningPass() {
    start_->setEnabled(true);
    stop_->setEnabled(false);
    bar_->setVisible(false);
    shared().tingZhi = 0;
}

bool RunningPass::step(int done, int total) {
    bar_->setRange(0, total);
    bar_->setValue(done);
    screen().ui_Pump();
    return shared().tingZhi != 0;
}

void exportCsvFile(const QByteArray& bytes, bool haveResult) {
    Screen& ui = screen();
    if (!haveResult) {
        ui.ui_Message(QStringLiteral("请先进行回测。"));
        return;
    }
    const QString path = ui.ui_PickFile(QStringLiteral("CSV 文件 (*.csv)"), true);
    if (path.isEmpty()) return;
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) < 0 || !file.commit()) {
        ui.ui_Message(QStringLiteral("文件写入失败：") + path, MessageKind::Error);
        return;
    }
    ui.ui_TimedTip(QStringLiteral("已导出到 ") + path, 3);
}

}  // namespace dovrex
