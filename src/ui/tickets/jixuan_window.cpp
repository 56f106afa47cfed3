#include "ui/tickets/jixuan_window.h"

#include "results/ticket_export.h"
#include "ui/calendar/lucky_number_window.h"

#include <QAction>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPainter>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include "pipeline/ticket_merge.h"
#include "screen/shared_state.h"
#include "ui/shell/form_main.h"
#include "ui/shell/window_parts.h"
#include "widgets/ball_art.h"
#include "widgets/command_trap.h"

namespace dovrex {

namespace {

constexpr int kBall = 36;
constexpr int kGap = 6;
constexpr int kLabelWidth = 56;

// Picture1: one row a ticket, six reds then the blue; a ball not drawn yet is an empty ring.
class JiXuanBoard : public QWidget {
  public:
    JiXuanBoard(const JiXuanWindow& window, int rows, QWidget* parent)
        : QWidget(parent), window_(window), rows_(rows) {
        setObjectName(QStringLiteral("Picture1"));
        setMinimumSize(kLabelWidth + 7 * (kBall + kGap) + kGap * 3, rows * (kBall + kGap) + kGap);
        setAutoFillBackground(true);
        QPalette p = palette();
        p.setColor(QPalette::Window, Qt::white);
        setPalette(p);
    }

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const JiXuanHao& hao = window_.hao();
        for (int k = 0; k < rows_; ++k) {
            const int y = kGap + k * (kBall + kGap);
            painter.setPen(Qt::darkGray);
            painter.drawText(QRect(0, y, kLabelWidth, kBall), Qt::AlignCenter,
                             QStringLiteral("第%1注").arg(k + 1));
            for (int c = 0; c < 7; ++c) {
                const int x = kLabelWidth + c * (kBall + kGap) + (c == 6 ? kGap * 2 : 0);
                const QRectF rect(x, y, kBall, kBall);
                const int n = hao[size_t(k)][size_t(c)];
                if (n > 0) {
                    paintBall(painter, rect, c == 6 ? kBlueBall : kRedBall,
                              QStringLiteral("%1").arg(n, 2, 10, QLatin1Char('0')));
                } else {
                    painter.setPen(QPen(QColor(0xCC, 0xCC, 0xCC), 1.5));
                    painter.setBrush(Qt::NoBrush);
                    painter.drawEllipse(rect.adjusted(2, 2, -2, -2));
                }
            }
        }
    }

  private:
    const JiXuanWindow& window_;
    int rows_;
};

}  // namespace

JiXuanWindow::JiXuanWindow(int zhuShu, uint64_t seed, QWidget* parent, int msPerBall)
    : QDialog(parent), draw_(zhuShu, seed) {
    setObjectName(QStringLiteral("frmJixuan"));
    setWindowTitle(msg::kJiXuanCaption);
    auto* layout = new QVBoxLayout(this);
    board_ = new JiXuanBoard(*this, draw_.zhuShu(), this);
    layout->addWidget(board_);
    auto* note = new QLabel(msg::kJiXuanNote, this);
    note->setStyleSheet(QStringLiteral("color: #555555"));
    layout->addWidget(note);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    export_ = new QPushButton(QStringLiteral("导出"), this);
    export_->setObjectName(QStringLiteral("cmmJXdaocu"));
    export_->setEnabled(false);
    auto* close = new QPushButton(QStringLiteral("关闭"), this);
    close->setObjectName(QStringLiteral("cmdOK"));
    close->setDefault(true);
    buttons->addWidget(export_);
    buttons->addWidget(close);
    layout->addLayout(buttons);
    connectCommand(export_, &QPushButton::clicked, this, [this] { jiXuan_Export(draw_.hao()); });
    connect(close, &QPushButton::clicked, this, &QDialog::accept);

    timer_ = new QTimer(this);
    timer_->setObjectName(QStringLiteral("Timer1"));
    timer_->setInterval(msPerBall);
    connectCommand(timer_, &QTimer::timeout, this, [this] { tick(); });
    timer_->start();
}

void JiXuanWindow::tick() {
    int ticket = 0, column = 0;
    if (!draw_.next(ticket, column)) {
        timer_->stop();
        done_ = true;
        export_->setEnabled(true);
        return;
    }
    ++shown_;
    board_->update();
}

void showRandomPick(QWidget* parent) {
    const int n =
        jiXuan_ZhuShu(screen().ui_AskText(msg::kJiXuanAsk, msg::kJiXuanCaption, QStringLiteral("5")));
    if (n < 1) return;
    JiXuanWindow window(n, JiXuanDraw::clockSeed(), parent);
    window.exec();
}

namespace {

// The lucky-number chooser offers a random ticket through this window.
const bool jixuanForLucky = [] {
    jixuanOpener() = showRandomPick;
    return true;
}();

}  // namespace

void installTicketTools(FormMain& window) {
    QMenu* tools = window.menu(QStringLiteral("工具(&T)"));
    tools->addSeparator();
    QAction* pick = tools->addAction(QStringLiteral("机选号码..."));
    pick->setObjectName(QStringLiteral("mnu_JiXuan"));
    connectCommand(pick, &QAction::triggered, &window, [&window] { showRandomPick(&window); });
    QAction* merge = tools->addAction(msg::kMergeMenu);
    merge->setObjectName(QStringLiteral("hebingxt"));
    connectCommand(merge, &QAction::triggered, &window, [&window] {
        window.selectPage(TopPage::Tickets);
        hebingxt_Click();
    });
}

}  // namespace dovrex
