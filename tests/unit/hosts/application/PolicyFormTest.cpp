// SPDX-License-Identifier: MIT
#include "hosts/application/window/PolicyForm.h"

#include "hosts/application/actions/ActionBundle.h"
#include "support/PrintTo.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>

#include <gmock/gmock.h>

namespace
{
constexpr quint32 anna = 501;

const QString me = "Me, in my session";
const QString administrator = "Administrator, in the background";

class PolicyFormTest : public testing::Test
{
protected:
    PolicyFormTest()
    {
        QObject::connect(&form, &PolicyForm::edited,
                         [this](const QVariantMap &changes) { edits += changes; });
    }
    static BookEntry wanting(const QVariantMap &wanted)
    {
        BookEntry entry;
        entry.wanted = entry.applied = wanted;
        return entry;
    }
    QComboBox &choice(const char *name) const { return *form.findChild<QComboBox *>(name); }
    QStringList people() const
    {
        QStringList people;
        for (int row = 0; row < choice("person").count(); ++row)
            people += choice("person").itemText(row);
        return people;
    }
    QString person() const { return choice("person").currentText(); }
    /// As a person does.
    void choose(const char *name, const QString &text)
    {
        QComboBox &box = choice(name);
        box.setCurrentIndex(box.findText(text, Qt::MatchStartsWith));
        Q_EMIT box.activated(box.currentIndex());
    }
    /// What stands beside the choices, and can be seen.
    QStringList hints() const
    {
        QStringList hints;
        for (const auto *const label : form.findChildren<QLabel *>()) {
            if (!label->buddy() && !label->text().isEmpty() && label->isVisibleTo(&form))
                hints += label->text();
        }
        return hints;
    }

    ActionBundle action;
    PolicyForm form{anna};
    QList<QVariantMap> edits;
};
} // namespace

TEST_F(PolicyFormTest, ShowsWhoRunsASchedule)
{
    const QVariant mine(anna);
    form.show(wanting({{"owner", mine}, {"actsIn", "session"}}), action);
    EXPECT_EQ(people(), QStringList({me, administrator}));
    EXPECT_EQ(person(), me);
    form.show(wanting({{"actsIn", "daemon"}}), action);
    EXPECT_EQ(people(), QStringList({me, administrator}));
    EXPECT_EQ(person(), administrator);
    form.show(wanting({{"actsIn", "session"}}), action);
    EXPECT_EQ(people(), QStringList({me, administrator, "Whoever is at the computer"}));
    EXPECT_EQ(person(), "Whoever is at the computer");
    form.show(wanting({{"owner", mine}, {"actsIn", "daemon"}}), action);
    EXPECT_EQ(person(), "Administrator, for me");
    form.show(wanting({{"owner", QVariant(anna + 1)}, {"actsIn", "session"}}), action);
    EXPECT_EQ(person(), "Another user (number 502)");
    EXPECT_TRUE(edits.isEmpty());
}

TEST_F(PolicyFormTest, TakesThePlaceThatTheBundleSaysWhereTheScheduleSaysNone)
{
    action.actsInSession = true;
    form.show(wanting({{"owner", QVariant(anna)}}), action);
    EXPECT_EQ(person(), me);
    action.actsInSession = false;
    form.show(wanting({{"owner", QVariant(anna)}}), action);
    EXPECT_EQ(person(), "Administrator, for me");
}

TEST_F(PolicyFormTest, OffersNobodyWhoCannotRunIt)
{
    action.isOfSystemAlone = true;
    form.show(wanting({{"actsIn", "session"}}), action);
    EXPECT_EQ(people(), QStringList(administrator));
    action.isOfSystemAlone = false;
    action.isUsersOwn = true;
    form.show(wanting({{"owner", QVariant(anna)}, {"actsIn", "session"}}), action);
    EXPECT_EQ(people(), QStringList(me));
}

TEST_F(PolicyFormTest, TellsWhoIsToRunIt)
{
    form.show(wanting({{"owner", QVariant(anna + 1)}, {"actsIn", "session"}}), action);
    choose("person", me);
    ASSERT_EQ(edits.size(), 1);
    EXPECT_EQ(edits[0], (QVariantMap{{"owner", QVariant(anna)}, {"actsIn", "session"}}));
    choose("person", administrator);
    ASSERT_EQ(edits.size(), 2);
    EXPECT_EQ(edits[1], (QVariantMap{{"owner", QVariant()}, {"actsIn", "daemon"}}));
    choose("person", "Another user");
    EXPECT_EQ(edits.size(), 2) << "as it is";
}

TEST_F(PolicyFormTest, SaysWhenAPasswordWillBeAskedFor)
{
    const QStringList toBecome{"You will be asked for an administrator's password."};
    BookEntry entry = wanting({{"actsIn", "daemon"}});
    form.show(entry, action);
    EXPECT_EQ(hints(), QStringList()) << "it is the administrator's already";
    entry.mayChange = false;
    form.show(entry, action);
    EXPECT_EQ(hints(), QStringList("Changing this schedule needs an administrator's password."));
    entry.applied->insert("owner", QVariant(anna));
    form.show(entry, action);
    EXPECT_EQ(hints(), toBecome);
    entry.applied.reset();
    form.show(entry, action);
    EXPECT_EQ(hints(), toBecome) << "it is new";
    entry.wanted = QVariantMap{{"owner", QVariant(anna)}, {"actsIn", "session"}};
    form.show(entry, action);
    EXPECT_EQ(hints(), QStringList());
}

TEST_F(PolicyFormTest, ShowsAndTellsWhatBecomesOfWhatWasMissedAndWhatComesAfterwards)
{
    form.show(wanting({{"missed", "run once"}, {"after", "power off"}}), action);
    EXPECT_TRUE(choice("missed").currentText().startsWith("Do it once"));
    EXPECT_TRUE(choice("after").currentText().startsWith("Switch off"));
    form.show(wanting({}), action);
    EXPECT_EQ(choice("missed").currentText(), "As the action itself says");
    EXPECT_EQ(choice("after").currentText(), "Nothing more");
    choose("missed", "Leave it out");
    choose("after", "Sleep again");
    EXPECT_EQ(edits, (QList<QVariantMap>{{{"missed", "skip"}}, {{"after", "sleep"}}}));
}

TEST_F(PolicyFormTest, SaysThatNoRestComesWhereNothingWakesTheComputer)
{
    const auto saysSo = [this](const QString &after, const QVariantMap &parameters) {
        form.show(wanting({{"after", after}, {"parameters", parameters}, {"owner", QVariant(anna)}}), action);
        return !hints().filter("This never comes").isEmpty();
    };
    EXPECT_TRUE(saysSo("sleep", {}));
    EXPECT_TRUE(saysSo("power off", {{"Needs Wake Up", 0}}));
    EXPECT_FALSE(saysSo("sleep", {{"Needs Wake Up", 1}}));
    EXPECT_FALSE(saysSo("sleep", {{"Needs Startup", 1}}));
    EXPECT_TRUE(saysSo("sleep", {{"Needs Wake Up", 2}, {"Needs Startup", 2}}));
    EXPECT_FALSE(saysSo("nothing", {}));
    EXPECT_FALSE(saysSo("", {}));
}
