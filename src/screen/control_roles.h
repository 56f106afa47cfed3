#pragma once

#include <QString>
#include <QStringList>

namespace dovrex::role {

// The controls the logic reaches through the screen (ui_Set, ui_Grid, ui_DressGrid, ui_MarkDrawn,
// ui_Log, ui_Progress), each named once by the object name it carries in the window. A role the
// window does not have is a fault: the GUI screen reports it, and a test opens the main window and
// checks that every role below reaches a control or a menu entry.
// clang-format off
inline const QString TDBGrid_RZ             = QStringLiteral("TDBGrid_RZ");              // the tickets
inline const QString TDBGridHistory         = QStringLiteral("TDBGridHistory");          // the draw history
inline const QString TDBGrid_FenBu          = QStringLiteral("TDBGrid_FenBu");           // number distribution
inline const QString TDBGrid_zdy            = QStringLiteral("TDBGrid_zdy");             // analysis and custom tables
inline const QString ProgressBar_TuBiao     = QStringLiteral("ProgressBar_TuBiao");      // the history page's bar
inline const QString Pic_subTouZhu          = QStringLiteral("Pic_subTouZhu");           // the ticket commands
inline const QString FrameStop              = QStringLiteral("FrameStop");               // the Stop panel
inline const QString cmm_stop               = QStringLiteral("cmm_stop");
inline const QString ProgressBar_TouZu_Busy = QStringLiteral("ProgressBar_TouZu_Busy");
inline const QString LabelJindu             = QStringLiteral("LabelJindu");              // progress value
inline const QString LabelJinduAll          = QStringLiteral("LabelJinduAll");           // progress total
inline const QString TextChaoZuoTip         = QStringLiteral("TextChaoZuoTip");          // the operation log
inline const QString FrameSuosuiSezi        = QStringLiteral("FrameSuosuiSezi");         // shrink settings
inline const QString Option_ShuoSuiLeiXing  = QStringLiteral("Option_ShuoSuiLeiXing");   // 保N型 choice
inline const QString Check_auto             = QStringLiteral("Check_auto");              // smart optimisation
inline const QString cmmSS_Run              = QStringLiteral("cmmSS(1)");                // the settings' run button
inline const QString FrameHaomaQuanzongValue = QStringLiteral("FrameHaomaQuanzongValue"); // weight values
inline const QString TimerSuosuijinxingzong = QStringLiteral("TimerSuosuijinxingzong");  // shrink's first-phase timer
inline const QString Text_ChoseNumberTip    = QStringLiteral("Text_ChoseNumberTip");     // the pick page's tip
inline const QString TabStrip_Top           = QStringLiteral("TabStrip_Top");            // the top pages
inline const QString TabStrip_TiaoJian      = QStringLiteral("TabStrip_TiaoJian");       // the condition tabs
inline const QString cmd_FX                 = QStringLiteral("cmd_FX");                  // probability analysis
inline const QString mnu_UserQiehuan        = QStringLiteral("mnu_UserQiehuan");         // 切换用户 menu entry
// clang-format on

// Every role above, for the test that each reaches a control.
inline QStringList all() {
    return {TDBGrid_RZ,
            TDBGridHistory,
            TDBGrid_FenBu,
            TDBGrid_zdy,
            ProgressBar_TuBiao,
            Pic_subTouZhu,
            FrameStop,
            cmm_stop,
            ProgressBar_TouZu_Busy,
            LabelJindu,
            LabelJinduAll,
            TextChaoZuoTip,
            FrameSuosuiSezi,
            Option_ShuoSuiLeiXing,
            Check_auto,
            cmmSS_Run,
            FrameHaomaQuanzongValue,
            TimerSuosuijinxingzong,
            Text_ChoseNumberTip,
            TabStrip_Top,
            TabStrip_TiaoJian,
            cmd_FX,
            mnu_UserQiehuan};
}

}  // namespace dovrex::role
