// SPDX-License-Identifier: MIT
#include "DozelyKit/core/bundles/NSBundle.h"
#include "support/PrintTo.h"

#include <gtest/gtest.h>

using namespace dozely;

TEST(AgentBundle, HoldsTheAlertsTextInSixLanguages)
{
    const auto bundle = NSBundle::bundleWithPath(AGENT_BUNDLE);
    ASSERT_TRUE(bundle);
    const QList<QPair<QString, QString>> texts{
        {"en", "Will run on %@."},     {"fr", "Sera exécuté le %@."}, {"de", "Wird am %@ ausgeführt."},
        {"es", "Se ejecutará el %@."}, {"ja", "%@ に実行されます。"}, {"ar", "سيُنفَّذ في %@."},
        {"nl", "Will run on %@."}};
    for (const auto &[language, text] : texts) {
        UserLanguages::set({language});
        EXPECT_EQ(bundle->localizedStringForKey("Alert message %@"), text) << language.toStdString();
    }
}

TEST(AgentBundle, HoldsTheTextOfAFailureInSixLanguages)
{
    const auto bundle = NSBundle::bundleWithPath(AGENT_BUNDLE);
    ASSERT_TRUE(bundle);
    QStringList texts;
    for (const QString language : {"en", "fr", "de", "es", "ja", "ar"}) {
        UserLanguages::set({language});
        texts += bundle->localizedStringForKey("Failure message %@");
        EXPECT_TRUE(texts.last().contains("%@")) << language.toStdString();
    }
    EXPECT_EQ(texts.first(), "Failed or not performed: %@");
    EXPECT_EQ(texts.removeDuplicates(), 0);
}

TEST(AgentBundle, NamesItself)
{
    const auto bundle = NSBundle::bundleWithPath(AGENT_BUNDLE);
    ASSERT_TRUE(bundle);
    EXPECT_EQ(bundle->bundleIdentifier(), "com.dozely.UserAgent");
    EXPECT_EQ(bundle->objectForInfoDictionaryKey("CFBundleExecutable").toString(), "Dozely Agent");
}
