// SPDX-License-Identifier: MIT
#include "hosts/common/words/OutcomeNames.h"

#include <QHash>

QString OutcomeNames::of(const QString &state)
{
    const QHash<QString, QString> names{{"asked", tr("asked for")},
                                        {"begun", tr("at work")},
                                        {"done", tr("done")},
                                        {"failed", tr("failed")},
                                        {"skipped", tr("skipped, too late")},
                                        {"missed", tr("missed")},
                                        {"postponed", tr("put off")},
                                        {"not performed", tr("could not be started")},
                                        {"removed", tr("cancelled")},
                                        {"unknown", tr("not known")},
                                        {"interrupted", tr("interrupted")}};
    return names.value(state, state); // a later daemon may know more
}

QString OutcomeNames::ofExit(qint64 status)
{
    return tr("exit status %1").arg(status);
}
