// SPDX-License-Identifier: MIT
#include "hosts/common/words/KnownReasons.h"

#include <QtGlobal>

namespace
{
using KnownReasons::Reason;

constexpr Reason reasons[] = {
    // Who may.
    {QT_TRANSLATE_NOOP("ReasonWords", "You are not allowed to do this.")},
    {QT_TRANSLATE_NOOP("ReasonWords", "Nobody but root may do this here: polkit, which decides about others, "
                                      "cannot be asked (%1).")},
    {QT_TRANSLATE_NOOP("ReasonWords", "Too many questions are open that somebody has to answer first.")},
    {QT_TRANSLATE_NOOP("ReasonWords", "Too many calls at a time: wait for the answers.")},
    {QT_TRANSLATE_NOOP("ReasonWords", "A user may have %1 schedules.")},
    {QT_TRANSLATE_NOOP("ReasonWords", "The schedules of a user may have %1 bytes in all.")},

    // What a schedule is.
    {QT_TRANSLATE_NOOP("ReasonWords", "\"%1\" was changed by somebody else meanwhile.")},
    {QT_TRANSLATE_NOOP("ReasonWords", "The name has more than %1 characters.")},
    {QT_TRANSLATE_NOOP("ReasonWords", "There is no time zone \"%1\".")},
    {QT_TRANSLATE_NOOP("ReasonWords", "It is too large: a schedule has at most %1 bytes.")},
    {QT_TRANSLATE_NOOP("ReasonWords", "It holds something that no schedule can keep.")},
    {QT_TRANSLATE_NOOP("ReasonWords", "It cannot repeat so: with these exceptions nothing is left of it.")},
    {QT_TRANSLATE_NOOP("ReasonWords", "It cannot repeat so: %1."), 1},

    // What could come of it.
    {QT_TRANSLATE_NOOP(
        "ReasonWords",
        "What is to follow comes only where the machine was woken or switched on for the action.")},
    {QT_TRANSLATE_NOOP("ReasonWords", "Nothing could come of it: %1."), 1},
    {QT_TRANSLATE_NOOP("ReasonWords", "the parameters name no program")},
    {QT_TRANSLATE_NOOP("ReasonWords", "the program \"%1\" is not an absolute path")},
    {QT_TRANSLATE_NOOP("ReasonWords", "there is no program %1")},
    {QT_TRANSLATE_NOOP("ReasonWords", "%1 is no program that can be run")},
    {QT_TRANSLATE_NOOP("ReasonWords", "there is no bundle at %1")},
    {QT_TRANSLATE_NOOP("ReasonWords", "%1 cannot act in the %2: %3"), 2},
    {QT_TRANSLATE_NOOP("ReasonWords", "session")},
    {QT_TRANSLATE_NOOP("ReasonWords", "daemon")},
    {QT_TRANSLATE_NOOP("ReasonWords", "it acts in the daemon alone")},
    {QT_TRANSLATE_NOOP("ReasonWords", "it names no \"%1\"")},
    {QT_TRANSLATE_NOOP("ReasonWords", "its \"%1\" is neither true nor false")},

    // The store, the record.
    {QT_TRANSLATE_NOOP("ReasonWords", "You may not read %1")},
    {QT_TRANSLATE_NOOP("ReasonWords", "The schedules are damaged, and are not overwritten: %1."), 1},
    {QT_TRANSLATE_NOOP("ReasonWords", "%1 was not changed: %2"), 2},

    // An occurrence that somebody wishes otherwise.
    {QT_TRANSLATE_NOOP("ReasonWords", "there is no schedule %1")},
    {QT_TRANSLATE_NOOP("ReasonWords", "schedule %1 has nothing to come")},
    {QT_TRANSLATE_NOOP("ReasonWords", "schedule %1 has no occurrence at %2 that is to come")},
    {QT_TRANSLATE_NOOP("ReasonWords", "the occurrence at %1 is not the next one of schedule %2")},
    {QT_TRANSLATE_NOOP("ReasonWords", "%1 occurrences of schedule %2 are decided upon already")},
    {QT_TRANSLATE_NOOP("ReasonWords", "an occurrence is postponed by 1 to %1 seconds")},

    // Whether the clock wakes the machine.
    {QT_TRANSLATE_NOOP("ReasonWords", "it is being tried already")},
    {QT_TRANSLATE_NOOP("ReasonWords", "an action goes on, or is due too soon")},
    {QT_TRANSLATE_NOOP("ReasonWords", "the machine is kept awake by %1")},
    {QT_TRANSLATE_NOOP("ReasonWords", "this machine cannot be put to sleep")},
    {QT_TRANSLATE_NOOP("ReasonWords", "the machine did not fall asleep")},
    {QT_TRANSLATE_NOOP("ReasonWords", "the machine does not let itself be put to sleep")},

    // What became of an action.
    {QT_TRANSLATE_NOOP("ReasonWords", "its program ended with status %1")},
    {QT_TRANSLATE_NOOP("ReasonWords", "its program could not be started")},
    {QT_TRANSLATE_NOOP("ReasonWords", "its process was ended by signal %1 (%2)")},
    {QT_TRANSLATE_NOOP("ReasonWords", "its process ended by itself with status %1")},
    {QT_TRANSLATE_NOOP("ReasonWords", "its performer ended without a word")},
    {QT_TRANSLATE_NOOP("ReasonWords", "its agent does not say why")},
    {QT_TRANSLATE_NOOP("ReasonWords", "it took more memory than it may")},
    {QT_TRANSLATE_NOOP("ReasonWords", "it took longer than %1 s")},
    {QT_TRANSLATE_NOOP("ReasonWords", "it was asked to end")},

    // A bundle.
    {QT_TRANSLATE_NOOP("ReasonWords", "There is no bundle %1")},
    {QT_TRANSLATE_NOOP("ReasonWords", "%1 is not a bundle")},
    {QT_TRANSLATE_NOOP("ReasonWords", "The bundle %1 is not trusted: %2"), 2},
    {QT_TRANSLATE_NOOP("ReasonWords", "it lies in no folder of plug-ins")},
    {QT_TRANSLATE_NOOP("ReasonWords", "The bundle %1 names no \"%2\"")},
    {QT_TRANSLATE_NOOP("ReasonWords", "The plug-in of %1 cannot be made: %2"), 2},
    {QT_TRANSLATE_NOOP("ReasonWords", "its factory made nothing")},
    {QT_TRANSLATE_NOOP("ReasonWords", "The plug-in of %1 is none for configuration")},
    {QT_TRANSLATE_NOOP("ReasonWords", "%1 has no view")},
    {QT_TRANSLATE_NOOP("ReasonWords", "Cannot load \"%1\": %2")},

    // A file.
    {QT_TRANSLATE_NOOP("ReasonWords", "Cannot read \"%1\": %2")},
    {QT_TRANSLATE_NOOP("ReasonWords", "Cannot write \"%1\": %2")},
    {QT_TRANSLATE_NOOP("ReasonWords", "it is not a file")},
};
} // namespace

std::span<const Reason> KnownReasons::all()
{
    return reasons;
}
