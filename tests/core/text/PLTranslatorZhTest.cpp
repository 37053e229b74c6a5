#include "core/text/PLTranslatorZh.h"

#include "support/QtPrinters.h"

#include <QCryptographicHash>
#include <QFile>

#include <gtest/gtest.h>

namespace {

const PLTranslatorZh& converter()
{
    static const PLTranslatorZh instance;
    return instance;
}

TEST(ZhTables, AreTheVerifiedDataUnchanged)
{
    const auto sha = [](const QString& table) {
        return QCryptographicHash::hash(table.toUtf8(), QCryptographicHash::Sha256).toHex();
    };
    EXPECT_EQ(sha(converter().charListS()),
              "c81dbbeea83488738d0ef8fc5f015d17b7fb53443c1d7a6f6160aec67bc712fc");
    EXPECT_EQ(sha(converter().charListT()),
              "ccd29c908a9f9cf62be04985aae4783452a42ad7445c55094ff4888b4032beb2");
    EXPECT_EQ(sha(converter().charListMars()),
              "1e972df6241c5b380923b2ada1eb8db72241dee36764190f40c2da19773c3e1f");
    for (const QString* t :
         {&converter().charListS(), &converter().charListT(), &converter().charListMars()})
        EXPECT_EQ(t->size(), PLTranslatorZh::kTableLength);
}

struct Conversion {
    const char* input;
    const char* simplified;
    const char* traditional;
    const char* mars;
};

class Conversions : public ::testing::TestWithParam<Conversion> {};

TEST_P(Conversions, FollowTheTables)
{
    const Conversion& c = GetParam();
    const QString input = QString::fromUtf8(c.input);
    EXPECT_EQ(converter().translateToSimplifed(input), QString::fromUtf8(c.simplified));
    EXPECT_EQ(converter().translateToTraditional(input), QString::fromUtf8(c.traditional));
    EXPECT_EQ(converter().translateToMars(input), QString::fromUtf8(c.mars));
}

INSTANTIATE_TEST_SUITE_P(
    Texts, Conversions,
    ::testing::Values(Conversion{"", "", "", ""},
                      Conversion{"abc 123\n[00:01.00]", "abc 123\n[00:01.00]",
                                 "abc 123\n[00:01.00]", "abc 123\n[00:01.00]"},
                      Conversion{"愛", "爱", "愛", "嬡"}, Conversion{"爱", "爱", "愛", "嬡"},
                      // 案 stands at the positions of 案 and 桉: the first one wins
                      Conversion{"案", "案", "案", "案"},
                      Conversion{"啊阿埃", "啊阿埃", "啊阿埃", "娿婀埃"}));

TEST(Conversions, OutputKeepsTheInputsLength)
{
    const QString text = converter().charListT() + QStringLiteral("x\U0001F3B5y");
    EXPECT_EQ(converter().translateToSimplifed(text).size(), text.size());
    EXPECT_EQ(converter().translateToMars(text).size(), text.size());
}

TEST(Conversions, MarsOnlyCharactersConvertToTheirPosition)
{
    const QString& mars = converter().charListMars();
    const QString& s = converter().charListS();
    const QString& t = converter().charListT();
    int checked = 0;
    for (qsizetype i = 0; i < mars.size() && checked < 50; ++i) {
        const QChar c = mars[i];
        if (s.contains(c) || t.contains(c) || mars.indexOf(c) != i)
            continue;
        EXPECT_EQ(converter().translateToSimplifed(QString(c)), QString(s[i]));
        EXPECT_EQ(converter().translateToTraditional(QString(c)), QString(t[i]));
        ++checked;
    }
    EXPECT_GT(checked, 10);
}

TEST(Conversions, WithoutMarsTheInputComesBackAndOneTableIsSearched)
{
    const PLTranslatorZh plain(false);
    EXPECT_FALSE(plain.hasMarsSupport());
    const QString text = QStringLiteral("爱 text");
    const QString back = plain.translateToMars(text);
    EXPECT_EQ(back.constData(), text.constData());               // the very same string
    const QChar marsOnly = QChar(converter().charListMars()[0]); // 娿
    EXPECT_EQ(plain.translateToSimplifed(QString(marsOnly)), QString(marsOnly));
    EXPECT_NE(converter().translateToSimplifed(QString(marsOnly)), QString(marsOnly));
}

TEST(Conversions, AgreeWithTheLinearSearchEverywhere)
{
    // Every unit of the tables' range, against indexOf on the tables themselves.
    const QString& s = converter().charListS();
    const QString& t = converter().charListT();
    const QString& m = converter().charListMars();
    QString all;
    for (char16_t u = 0x2400; u < 0xA000; ++u)
        all += QChar(u);
    const QString simplified = converter().translateToSimplifed(all);
    for (qsizetype k = 0; k < all.size(); ++k) {
        qsizetype i = t.indexOf(all[k]);
        if (i < 0)
            i = m.indexOf(all[k]);
        ASSERT_EQ(simplified[k], i < 0 ? all[k] : s[i]) << k;
    }
}

} // namespace
