// SPDX-License-Identifier: MIT
#include "hosts/admin/DoctorCommand.h"

#include "hosts/admin/AdminError.h"
#include "hosts/admin/AdminOptions.h"
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

QString nameOf(Finding::State state)
{
    return state == Finding::State::Fine ? "fine" : state == Finding::State::Wrong ? "wrong" : "unknown";
}

void show(const Found &found)
{
    using State = Finding::State;
    const State state = found.finding.state;
    const Output::Mood mood = state == State::Fine    ? Output::Mood::Good
                              : state == State::Wrong ? Output::Mood::Bad
                                                      : Output::Mood::Doubtful;
    Output::line(Output::coloured(nameOf(state).leftJustified(9), mood) +
                 Output::escaped(QString("%1: %2").arg(found.name, found.finding.text)));
    if (!found.finding.remedy.isEmpty())
        Output::line(Output::escaped("         -> " + found.finding.remedy));
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
        Output::line(wrong == 0   ? QString("Nothing is wrong.")
                     : wrong == 1 ? QString("One thing is wrong.")
                                  : QString("%1 things are wrong.").arg(wrong));
    }
    if (wrong > 0)
        throw AdminError(ExitStatus::Failed, {});
}
