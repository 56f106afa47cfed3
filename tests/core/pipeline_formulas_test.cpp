#include <unordered_set>

#include "core/pipeline_fixture.h"
#include "pipeline/shrink.h"
#include "pipeline/ssgs_formulas.h"
#include "pipeline/ticket_init.h"

namespace dovrex::test {
namespace {

const SsgsFormulas& shippedFormulas() {
    static const SsgsFormulas formulas = [] {
        SsgsFormulas f;
        QString why;
        EXPECT_TRUE(read_SsgsFile(QStringLiteral(DOVREX_SSGS_FILE), f, &why)) << why.toStdString();
        return f;
    }();
    return formulas;
}

std::uint32_t maskOf(const Reds& r) {
    std::uint32_t m = 0;
    for (int i = 1; i <= 6; ++i) m |= 1u << r[size_t(i)];
    return m;
}

// Every six of 10..20 drags shares five reds with a ticket of the formula of that size.
TEST(SsgsFormulas, EachSizeIsAFiveOfSixCover) {
    const SsgsFormulas& all = shippedFormulas();
    for (int n = 10; n <= 20; ++n) {
        ASSERT_TRUE(all.contains(n)) << n;
        const std::vector<int>& xuhao = all[n];
        std::vector<int> drags;
        for (int i = 0; i < n; ++i) drags.push_back(i);
        const auto sixes = sixesOf(drags);
        std::unordered_set<std::uint32_t> formula;
        int previous = 0;
        for (int x : xuhao) {
            ASSERT_GT(x, previous) << "n " << n << ": ascending, each once";
            ASSERT_LE(x, int(sixes.size())) << n;
            previous = x;
            formula.insert(maskOf(sixes[size_t(x - 1)]));
        }
        int uncovered = 0;
        for (const Reds& six : sixes) {
            const std::uint32_t m = maskOf(six);
            bool covered = formula.count(m) > 0;
            for (int out = 0; out < n && !covered; ++out) {
                if (!(m >> out & 1)) continue;
                for (int in = 0; in < n && !covered; ++in)
                    if (!(m >> in & 1)) covered = formula.count((m & ~(1u << out)) | (1u << in)) > 0;
            }
            uncovered += !covered;
        }
        EXPECT_EQ(uncovered, 0) << n << " drags, " << xuhao.size() << " tickets";
    }
}

TEST(SsgsFormulas, BadFilesAreRefused) {
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("f.txt"));
    SsgsFormulas f;
    QString why;
    EXPECT_FALSE(read_SsgsFile(path, f, &why));
    for (const char* text : {"10 1 2 3\n", "10: 1 x\n", "x: 1\n", "10: 0\n"}) {
        ASSERT_TRUE(writeFile(path, text));
        EXPECT_FALSE(read_SsgsFile(path, f, &why)) << text;
    }
}

class ShippedFormulasTest : public ShippedStoreTest {};

TEST_F(ShippedFormulasTest, TheShippedStoreHoldsThem) {
    for (auto it = shippedFormulas().begin(); it != shippedFormulas().end(); ++it) {
        std::vector<int> stored;
        auto c = store_Query(QStringLiteral("select Xuhao from Ssgs where Haomagesu=? order by Xuhao"),
                             {it.key()});
        for (; !c->eof(); c->moveNext()) stored.push_back(c->intValue(0));
        EXPECT_EQ(stored, it.value()) << it.key();
    }
}

class FormulaInitTest : public PipelineTest {};

TEST_F(FormulaInitTest, TheFirstStepMarksThemAndTheShrinkKeepsThemWhole) {
    storeFormulas(store(), shippedFormulas());
    // Drags spread over the numbers, one blue: the formula's tickets carry their 序号, a shrink at
    // T 6 keeps them all and first, and a complete pick keeps exactly the formula.
    const int drags[] = {2, 5, 7, 11, 13, 17, 19, 23, 24, 29, 31, 33, 1, 3, 9, 15, 21, 26, 28, 30};
    set_GuoLvTiaoJian(109, kPickDrag);
    for (int i = 0; i < 9; ++i) set_GuoLvTiaoJian(drags[i], kPickDrag);
    const QString reds = QStringLiteral(
        "select 红球1||' '||红球2||' '||红球3||' '||红球4||' '||红球5||' '||红球6 "
        "from 日志表 where 序号=?");
    for (int v = 10; v <= 20; ++v) {
        set_GuoLvTiaoJian(drags[v - 1], kPickDrag);
        store_Execute(QStringLiteral("DELETE FROM 日志表"));
        const IssueNumber issue = 2008100 + v;
        const std::vector<int>& formula = shippedFormulas()[v];
        ASSERT_GT(init_TouZhu(issue), 0) << v;
        EXPECT_EQ(
            intScalar(QStringLiteral("select count(*) from 日志表 where 缩水公式<>?"), {kOutsideFormula}),
            int(formula.size()));
        const QString first = scalar(reds, {formula[0]}).toString();
        if (v == 12)
            for (int x : formula)
                EXPECT_EQ(intScalar(QStringLiteral("select 缩水公式 from 日志表 where 序号=?"), {x}), x);
        EXPECT_EQ(run_SuoShui(6, issue), int(formula.size())) << v << " drags";
        EXPECT_EQ(scalar(reds, {1}).toString(), first) << v;
    }
}

}  // namespace
}  // namespace dovrex::test
