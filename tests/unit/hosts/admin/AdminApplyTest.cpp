// SPDX-License-Identifier: MIT
#include "unit/hosts/admin/AdminTool.h"

#include <QJsonArray>

#include <gmock/gmock.h>

using testing::HasSubstr;

namespace
{
class AdminApplyTest : public testing::Test
{
protected:
    QString write(const QString &name, const QByteArray &content)
    {
        QFile file(tool.root.join('/' + name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return file.fileName();
    }

    AdminTool tool;
};

const QByteArray one = "schedules: [{name: One, program: /bin/true, every: day, at: \"03:00\"}]\n";
} // namespace

TEST_F(AdminApplyTest, WhatWasExportedIsWhatIsThere)
{
    tool.add("Once", {"--time-zone", "Europe/Berlin", "--owner", "0", "--stays"});
    EXPECT_EQ(tool.run({"add", "Often", "--program", "/bin/true", "--argument", "x", "--every", "weekday",
                        "--at", "03:00", "--wake", "--after", "sleep", "--missed", "run-once=2d",
                        "--parameter", "Ratio=1.5"})
                  .status,
              0);
    const auto exported = tool.run({"export"});
    EXPECT_EQ(exported.status, 0);
    const QByteArray before = tool.store();
    const auto applied = tool.run({"apply", write("x.plist", exported.output)});
    EXPECT_EQ(applied.status, 0) << applied.errors.constData();
    EXPECT_EQ(applied.output, "Nothing differs.\n");
    EXPECT_EQ(tool.store(), before);

    EXPECT_EQ(tool.run({"remove", "Once"}).status, 0);
    EXPECT_EQ(tool.run({"apply", write("x.plist", exported.output)}).status, 4);
    EXPECT_EQ(tool.run({"export"}).output.size(), exported.output.size());
    const auto calendar = tool.run({"export", "--ics"});
    EXPECT_EQ(calendar.status, 0) << calendar.errors.constData();
    EXPECT_TRUE(calendar.output.startsWith("BEGIN:VCALENDAR\r\n")) << calendar.output.constData();
    EXPECT_TRUE(calendar.output.endsWith("END:VCALENDAR\r\n"));
}

TEST_F(AdminApplyTest, TheStoreBecomesWhatTheFileSays)
{
    tool.add("Other");
    const auto applied = tool.run({"apply", write("f.yaml", one)});
    EXPECT_EQ(applied.status, 4) << applied.errors.constData();
    EXPECT_THAT(applied.output.toStdString(), HasSubstr("\"Other\""));
    EXPECT_THAT(applied.output.toStdString(), HasSubstr(") is removed.\n\"One\" ("));
    EXPECT_THAT(tool.run({"list"}).output.toStdString(), HasSubstr("every day at 03:00"));
    EXPECT_EQ(tool.run({"apply", write("f.yaml", one)}).status, 0);
    const auto log = tool.root.logContent();
    EXPECT_TRUE(log.contains("was added by user")) << log.constData();
}

TEST_F(AdminApplyTest, ADryRunOnlyTells)
{
    tool.add("Other");
    const QByteArray before = tool.store();
    const auto applied = tool.run({"apply", "--dry-run", "--json", write("f.yaml", one)});
    EXPECT_EQ(applied.status, 4);
    EXPECT_EQ(tool.store(), before);
    EXPECT_TRUE(applied.json()["isDryRun"].toBool());
    EXPECT_TRUE(applied.json()["isChanged"].toBool());
    EXPECT_EQ(applied.json()["added"].toArray().size(), 1);
    EXPECT_EQ(applied.json()["removed"].toArray().size(), 1);
}

TEST_F(AdminApplyTest, NothingIsChangedByAFileThatIsWrong)
{
    tool.add("Other");
    const QByteArray before = tool.store();
    for (const char *content : {"", "schedules: 1", "schedules: [{name: A}]", "{",
                                "schedules: [{name: A, program: /no/such, every: day, at: \"03:00\"}]"}) {
        const auto applied = tool.run({"apply", write("f.yaml", content)});
        EXPECT_EQ(applied.status, 1) << content;
        EXPECT_EQ(applied.output, QByteArray());
    }
    EXPECT_EQ(tool.run({"apply", "/no/such/file"}).status, 1);
    EXPECT_EQ(tool.store(), before);
}

TEST_F(AdminApplyTest, StartsAreSpreadByTheIdOfTheMachine)
{
    const QString file = write("f.yaml", one);
    EXPECT_EQ(tool.run({"apply", "--spread", "30m", file}).status, 1) << "no id";
    tool.root.makeFolder("/etc");
    write("etc/machine-id", "0123456789abcdef0123456789abcdef\n");
    EXPECT_EQ(tool.run({"apply", "--spread", "30m", file}).status, 4);
    EXPECT_THAT(tool.run({"list"}).output.toStdString(), HasSubstr("every day at 03:09:01"));
    EXPECT_EQ(tool.run({"apply", "--spread", "30m", file}).status, 0);
    for (const char *wrong : {"often", "0", "86401", "25h"})
        EXPECT_EQ(tool.run({"apply", "--spread", wrong, file}).status, 2) << wrong;
    EXPECT_EQ(tool.run({"apply", "--spread", "1", file}).status, 4);
    EXPECT_THAT(
        tool.run({"add", "B", "--program", "/bin/true", "--every", "day", "--at", "04:00", "--spread", "30m"})
            .output.toStdString(),
        HasSubstr("every day at 04:09:01"));
}
