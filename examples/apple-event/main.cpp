// SPDX-License-Identifier: MIT
//
// Apple events between two processes:
//
//   apple-event [--root DIR] serve          answers greetings until it is ended
//   apple-event [--root DIR] greet NAME     asks the process that serves for a greeting, and prints it
//
// DIR is a folder to try it in, without touching the machine's own; both processes need the same one.
#include "Greeter.h"

#include "DozelyKit/communication/events/NSAppleEventManager.h"
#include "DozelyKit/communication/events/ProcessSerialNumber.h"
#include "DozelyKit/communication/events/ZDRAppleEventManager.h"
#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "DozelyKit/core/foundation/RootFolder.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>

namespace
{
int serve()
{
    Greeter greeter;
    // From here on the process listens and can be found under its signature.
    dozely::ProcessSignature::set(Greeter::signature);
    NSAppleEventManager::sharedAppleEventManager().setEventHandlerForEventClass(
        &greeter, "greet", Greeter::eventClass, Greeter::eventID);
    return QCoreApplication::exec();
}

int greet(const QString &name)
{
    const auto event = ZDRAppleEvent::appleEventWithEventClassForProcessWithSignature(
        Greeter::eventClass, Greeter::eventID, Greeter::signature);
    event->setStringForKeyword(name, keyDirectObject);
    const auto reply = ZDRAppleEventManager::sharedInstance()->sendAppleEvent(event, true);
    if (!reply) {
        std::fputs("Nobody answers. Is one of us serving?\n", stderr); // the log says why
        return 1;
    }
    // The greeter answered through the event object, whose text is Unicode: read it the same way.
    const auto answer = ZDRAppleEvent::appleEventWithAppleEventDescriptor(
        NSAppleEventDescriptor::descriptorWithAEDesc(*reply->carbonEvent()));
    std::printf("%s (greeting %lld)\n", qPrintable(answer->stringValueForKeyword(keyDirectObject)),
                static_cast<long long>(answer->longValueForKeyword(dozely::fourCharCode("cnt "))));
    return 0;
}
} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    NSProcessInfo::setProcessName("apple-event");
    QCommandLineParser parser;
    const QCommandLineOption root("root", "Try it below the folder <DIR>.", "DIR");
    parser.addOption(root);
    parser.addPositionalArgument("command", "serve, or greet NAME");
    parser.addHelpOption();
    parser.process(application);
    if (parser.isSet(root)) {
        const QString refusal = dozely::RootFolder::refusal(parser.value(root));
        if (!refusal.isEmpty()) {
            std::fprintf(stderr, "%s\n", qPrintable(refusal));
            return 2;
        }
        dozely::RootFolder::set(parser.value(root));
    }
    const QStringList words = parser.positionalArguments();
    if (words == QStringList{"serve"})
        return serve();
    if (words.size() == 2 && words.first() == "greet")
        return greet(words.last());
    parser.showHelp(2);
}
