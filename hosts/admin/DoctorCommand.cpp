// SPDX-License-Identifier: MIT
#include "hosts/admin/DoctorCommand.h"

#include "hosts/admin/AdminError.h"
#include "hosts/admin/AdminOptions.h"
#include "hosts/admin/AdminText.h"
#include "hosts/admin/DisplayWidth.h"
#include "hosts/admin/DoctorCheck.h"
#include "hosts/admin/Output.h"

#include <algorithm>

namespace
{
struct Found {
    QString name;
    Finding finding;
    bool isWrong() const { return finding.state == Finding::State::Wrong; }
};

/// For programs.
QString nameOf(Finding::State state)
{
    return state == Finding::State::Fine ? "fine" : state == Finding::State::Wrong ? "wrong" : "unknown";
}

QString shownNameOf(Finding::State state)
{
    return state == Finding::State::Fine    ? AdminText::tr("fine")
           : state == Finding::State::Wrong ? AdminText::tr("wrong")
                                            : AdminText::tr("unknown");
}

void show(const Found &found)
{
    using State = Finding::State;
    const State state = found.finding.state;
    const Output::Mood mood = state == State::Fine    ? Output::Mood::Good
                              : state == State::Wrong ? Output::Mood::Bad
                                                      : Output::Mood::Doubtful;
    const qsizetype width = 2 + DisplayWidth::widest({shownNameOf(State::Fine), shownNameOf(State::Wrong),
                                                      shownNameOf(State::Unknown)});
    Output::line(Output::coloured(DisplayWidth::padded(shownNameOf(state), width), mood) +
                 Output::escaped(QString("%1: %2").arg(found.name, found.finding.text)));
    if (!found.finding.remedy.isEmpty())
        Output::line(Output::escaped(QString(width, ' ') + "-> " + found.finding.remedy));
}

void showInJson(const QList<Found> &all, bool isFine)
{
    QVariantList checks;
    for (const Found &found : all) {
        const QString remedy = found.finding.remedy;
        checks += QVariantMap{{"name", found.name},
                              {"state", nameOf(found.finding.state)},
                              {"finding", found.finding.text},
                              {"remedy", remedy.isEmpty() ? QVariant() : remedy}};
    }
    Output::json({{"checks", checks}, {"isFine", isFine}});
}
} // namespace

DoctorChecks::List DoctorChecks::all()
{
    List checks;
    addServices(checks);
    addFolders(checks);
    addStore(checks);
    addPower(checks);
    addClock(checks);
    return checks;
}

void DoctorCommand::run(const AdminOptions &options)
{
    QList<Found> all;
    for (const auto &check : DoctorChecks::all())
        all += Found{check->name(), check->look(DoctorServices::ofTheMachine())};
    const auto wrong =
        std::count_if(all.cbegin(), all.cend(), [](const Found &each) { return each.isWrong(); });
    if (options.isSet("json")) {
        showInJson(all, wrong == 0);
    } else {
        for (const Found &found : all)
            show(found);
        Output::line("");
        Output::line(wrong == 0 ? AdminText::tr("Nothing is wrong.")
                                : AdminText::tr("%n thing(s) are wrong.", nullptr, static_cast<int>(wrong)));
    }
    if (wrong > 0)
        throw AdminError(ExitStatus::Failed, {});
}
