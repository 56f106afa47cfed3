#include "app/help_text.h"

#include <QRegularExpression>
#include <algorithm>

namespace dovrex {

namespace {

QString plainText(QString html) {
    static const QRegularExpression kBreaks(QStringLiteral("<(br|/p|/li|/tr|/h[1-6]|/div)[^>]*>"),
                                            QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression kTags(QStringLiteral("<[^>]*>"));
    static const QRegularExpression kBlankLines(QStringLiteral("\\n\\s*\\n+"));
    html.replace(kBreaks, QStringLiteral("\n"));
    html.remove(kTags);
    html.replace(QStringLiteral("&lt;"), QStringLiteral("<"))
        .replace(QStringLiteral("&gt;"), QStringLiteral(">"))
        .replace(QStringLiteral("&nbsp;"), QStringLiteral(" "))
        .replace(QStringLiteral("&amp;"), QStringLiteral("&"));
    html.replace(kBlankLines, QStringLiteral("\n"));
    return html.trimmed();
}

}  // namespace

QStringList cut_HelpText(const QString& html) {
    QStringList sections;
    // Colours of the style sheet ("#222") are not marks: look in the body only.
    const int body = std::max<qsizetype>(0, html.indexOf(QStringLiteral("<body"), 0, Qt::CaseInsensitive));
    for (int n = 1; n <= kHelpSections; ++n) {
        const int from = html.indexOf(QStringLiteral("#%1").arg(n), body);
        if (from < 0) {
            sections << QString();
            continue;
        }
        int to = html.size();
        for (int m = n + 1; m <= kHelpSections; ++m) {
            const int next = html.indexOf(QStringLiteral("#%1").arg(m), from);
            if (next >= 0) {
                to = next;
                break;
            }
        }
        const int begin = from + 2;
        const QString section = plainText(html.mid(begin, to - begin));
        sections << section.trimmed();
    }
    return sections;
}

int helpSectionForPage(int topPage, int conditionTab) {
    switch (topPage) {
        case 0:
            return conditionTab == 1 ? 1 : (conditionTab == 29 ? 3 : 2);
        case 1:
            return 5;
        case 2:
            return 4;
        case 3:
            return 3;
        default:
            return 1;
    }
}

}  // namespace dovrex
