// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// The names that stand at both ends of something: in a plug-in and in the program that loads it, in a
/// program that posts and in the one that hears it, in whatever writes a schedule and what performs it. They
/// are a contract: none ever changes.
///
/// EXAMPLE
///     std::unique_ptr<WDPlugIn> MyFactory::makeForRole(const QString &roleKey)
///     {
///         if (roleKey == dozely::InfoKey::userAgentModule)
///             return std::make_unique<MyUserAgentPlugIn>();
///         return make();
///     }
namespace dozely
{

/// Keys of a plug-in bundle's Info dictionary ("Contents/Info.plist"), which hosts read. All may be missing.
namespace InfoKey
{
/// The module of each role, and the name of the role in WDPlugInFactory::makeForRole: a string, a file name
/// below "Contents/Linux". A bundle without daemonModule is performed in the session unless it says
/// otherwise.
/// @{
inline constexpr QLatin1StringView daemonModule("WDDaemonModule");
inline constexpr QLatin1StringView userAgentModule("WDUserAgentModule");
inline constexpr QLatin1StringView prefPaneModule("WDPrefPaneModule");
/// @}

/// Where an occurrence is performed: true (or 1) in the session, else in the daemon.
/// ParameterKey::actsInUserAgent goes first.
inline constexpr QLatin1StringView actsInUserAgent("WDActsInUserAgent");

/// True (or 1): the action is possible in the daemon alone; the module for the session shows nothing but the
/// alert.
inline constexpr QLatin1StringView actsInDaemonOnly("WDActsInDaemonOnly");

/// What becomes of occurrences that are found after their time, where a schedule does not say it: a string,
/// "plug-in" (by the plug-in's time-out), "skip" or "run once"; and with "run once" how late one may be:
/// seconds, an integer. Without them "plug-in", and any lateness.
/// @{
inline constexpr QLatin1StringView missedPolicy("WDMissedPolicy");
inline constexpr QLatin1StringView missedLimit("WDMissedLimit");
/// @}

/// False (or 0): the machine may fall asleep while the action goes on, as one that puts it to sleep needs.
inline constexpr QLatin1StringView inhibitsSleep("WDInhibitsSleep");

/// The interface file that WDUserAgentPlugIn::loadNib, or WDPrefPanePlugIn::loadNib, loads: a string, its
/// name without ".ui".
/// @{
inline constexpr QLatin1StringView userAgentNib("WDUserAgentNib");
inline constexpr QLatin1StringView editNibFile("WDEditNibFile");
/// @}
} // namespace InfoKey

/// Dynamic properties (QObject::setProperty) that hosts give to a plug-in object before its parameters.
namespace PlugInProperty
{
/// A string: the schedule's name, for people, where the action is performed. Missing where none is known.
inline constexpr char scheduleName[] = "scheduleName";

/// A boolean, before a configuration side's view is loaded: true where the host has places of its own for
/// what every action has, alert, waking and switching on; the view then need not repeat them. Missing: false.
inline constexpr char hostHasUsualOptions[] = "hostHasUsualOptions";
} // namespace PlugInProperty

/// Keys of the localised texts ("Localizable.strings").
namespace TextKey
{
/// In a plug-in bundle: the name that a user sees, and the title of the alert.
inline constexpr QLatin1StringView pluginName("Plugin Name");

/// In a plug-in bundle: what happens unless the user cancels, a sentence ("The computer goes off unless you
/// cancel."), for the alert. May be missing.
inline constexpr QLatin1StringView unlessCancelled("Unless Cancelled");

/// In the agent's bundle: the text of the alert; "%@" stands for date and time.
inline constexpr QLatin1StringView alertMessage("Alert message %@");

/// In the library's bundle: the label of the alert's button.
inline constexpr QLatin1StringView cancel("Cancel");
} // namespace TextKey

/// The class under whose name the agent registers its bundle (NSBundle::registerClass), for
/// TextKey::alertMessage.
inline constexpr QLatin1StringView userAgentControllerClass("WDUserAgentController");

/// Keys of an action's parameters that mean the same for every plug-in. Whoever makes a schedule writes them,
/// integers all of them; a text is taken for the integer at its beginning. All may be missing.
namespace ParameterKey
{
/// Not 0: the user is alerted before the action. 0 and a missing key: no alert.
inline constexpr QLatin1StringView alert("Alert");

/// How many seconds before the action the user is alerted. Less than 1 leaves no time for an alert; -1 says
/// that none is wanted. A missing key is 0.
inline constexpr QLatin1StringView delayBeforeAlert("Delay before alert");

/// 1: the machine is woken, or switched on, for the action. A missing key is 0.
/// @{
inline constexpr QLatin1StringView needsWakeUp("Needs Wake Up");
inline constexpr QLatin1StringView needsStartup("Needs Startup");
/// @}

/// 1: the action is performed in the session; any other value: in the daemon. A missing key leaves it to the
/// bundle.
inline constexpr QLatin1StringView actsInUserAgent("Acts In User Agent");

/// 1: the user at the console is told when the action failed or was not performed. A missing key is 0.
inline constexpr QLatin1StringView tellsFailure("Tell Failure");
} // namespace ParameterKey

/// Limits of an action, integers all of them: keys of a bundle's Info dictionary, and of a schedule's
/// parameters, which go first. A missing key leaves what is usual. docs/actions.md says what comes of them.
namespace LimitKey
{
inline constexpr QLatin1StringView nice("WDActionNice");           ///< -20 to 19, as setpriority(2) has it.
inline constexpr QLatin1StringView cpuWeight("WDActionCPUWeight"); ///< 1 to 10000; others have 100.
inline constexpr QLatin1StringView ioWeight("WDActionIOWeight");   ///< 1 to 10000; others have 100.
inline constexpr QLatin1StringView memory("WDActionMemoryLimit");  ///< Bytes, 1 MiB at least.
inline constexpr QLatin1StringView time("WDActionTimeLimit"); ///< Seconds until it is ended; 0 for never.
inline constexpr QLatin1StringView timeToEnd("WDActionTimeToEnd"); ///< Seconds until it is killed then; 90.
} // namespace LimitKey

/// Parameters of Command.plugin.
namespace CommandKey
{
inline constexpr QLatin1StringView program("Program"); ///< A string, the program's absolute path. Required.
inline constexpr QLatin1StringView arguments("Arguments"); ///< A list of strings; missing: none.
} // namespace CommandKey

/// Parameters of Sleep.plugin, PowerOff.plugin and Restart.plugin; of LogOut.plugin, which waits a minute.
namespace PowerKey
{
/// The integer 1: it is done also when others have forbidden it for ten minutes. Any other value and a
/// missing key: it is given up then.
inline constexpr QLatin1StringView force("Force");
} // namespace PowerKey

/// Parameters of Message.plugin.
namespace MessageKey
{
inline constexpr QLatin1StringView text("Text");   ///< A string. Required.
inline constexpr QLatin1StringView title("Title"); ///< A string; missing or empty: the schedule's name.
inline constexpr QLatin1StringView sound("Sound"); ///< A name of the desktop's sound theme; missing: none.
} // namespace MessageKey

/// Parameters of Open.plugin.
namespace OpenKey
{
/// A list of strings: absolute paths of files, folders and applications (".desktop"), names of applications
/// ("org.example.Player.desktop"), addresses ("https://..."). Required.
inline constexpr QLatin1StringView items("Items");
} // namespace OpenKey

/// Parameters of Script.plugin, one of them.
namespace ScriptKey
{
inline constexpr QLatin1StringView script("Script");          ///< A string, the script's text.
inline constexpr QLatin1StringView scriptFile("Script File"); ///< A string, its absolute path.
} // namespace ScriptKey

/// The orders: notifications by which daemon, agent and admin tool tell each other what to do, posted by
/// WDCommunicationCenter and heard on WDNotificationCenter. The object of each is an OrderSender, the user
/// info has keys of OrderKey. Who receives one asks the kernel who posted it, and believes nothing that the
/// order says about that.
namespace OrderName
{
/// From the daemon (WDDaemonPlugIn::actInUserAgentNow) to the agent at the console: perform the occurrence
/// now. Sender: userAgent. Keys: bundlePath, date, parameters (empty when there are none), scheduleName,
/// scheduleIdentifier and skipsOverlap (which may be missing). Obeyed from root and the root folder's owner.
inline constexpr QLatin1StringView userAgentMustAct("UserAgentMustActEvent");

/// From the daemon to the agent at the console, a moment before userAgentMustAct: make ready what that will
/// need. It may get lost, and what it speaks of may never come. Sender, keys and who is obeyed as for that.
inline constexpr QLatin1StringView userAgentMustPrepare("UserAgentMustPrepareEvent");

/// From the daemon (WDDaemonPlugIn::anticipateInUserAgentNow) to the agent at the console: announce the
/// occurrence to the user. Sender, keys and who is obeyed as for userAgentMustAct.
inline constexpr QLatin1StringView userAgentMustAnticipate("UserAgentMustAnticipateEvent");

/// From the daemon to an agent: withdraw the alert of an occurrence that will not take place then. It may get
/// lost, and there may be no such alert. Sender: userAgent. Keys: bundlePath, date. Obeyed from root and the
/// root folder's owner.
inline constexpr QLatin1StringView userAgentMustWithdraw("UserAgentMustWithdrawEvent");

/// From the daemon to the agent at the console: tell the user that an action failed or was not performed.
/// Sender: userAgent. Keys: scheduleName, failure. Obeyed from root and the root folder's owner.
inline constexpr QLatin1StringView userAgentMustTellFailure("UserAgentMustTellFailureEvent");

/// From the configuration application to its user's agent: show an alert that announces nothing, so that the
/// user sees whether alerts reach him. Sender: application. No keys. Obeyed from the agent's own user, root
/// and the root folder's owner.
inline constexpr QLatin1StringView userAgentMustTestAlert("UserAgentMustTestAlertEvent");

/// From an agent (WDUserAgentPlugIn::actInDaemonNow) to the daemon: perform the occurrence there. Sender:
/// daemon. Keys: bundlePath, date, parameters. Obeyed from the user whose agent has the occurrence; the
/// daemon acts with its own parameters.
inline constexpr QLatin1StringView daemonMustAct("DaemonMustActEvent");

/// From an agent (WDUserAgentPlugIn::cancelEvent) to the daemon: drop the occurrence. Sender: daemon. Keys:
/// bundlePath, date. Obeyed from root, the schedule's owner, and the user who was alerted or whose agent has
/// the occurrence.
inline constexpr QLatin1StringView daemonMustRemove("DaemonMustRemoveEvent");

/// From the admin tool or an agent to the daemon: an occurrence is not to be performed. Sender: admin, or
/// daemon from an agent. Keys: scheduleIdentifier, and date, which may be missing for the next one to come,
/// or be one that is still far ahead; or, from who knows no more, bundlePath and date. With wholeDay all
/// that the schedule has on the day of that occurrence. Obeyed from whom daemonMustRemove is obeyed from. It
/// is refused or noted for good when the sender has its answer.
inline constexpr QLatin1StringView daemonMustSkip("DaemonMustSkipEvent");

/// The same, and the same keys but wholeDay: an occurrence is to be performed later: delay, counted from the
/// date at which it was to be performed, or from now when that is past.
inline constexpr QLatin1StringView daemonMustPostpone("DaemonMustPostponeEvent");

/// From an agent to the daemon: what became of an occurrence that it was handed, where the daemon cannot know
/// it from the agent's answer: it may have come too late, and it is given before the action. Sender: daemon.
/// Keys: bundlePath, date, parameters, outcome; with the outcome failed also failure, and exitStatus where it
/// is known; with the outcome notPerformed failure where it is known. With any of them output, where the
/// action is over and has written something. Believed from the user whose agent has the occurrence.
inline constexpr QLatin1StringView daemonMustNoteOutcome("DaemonMustNoteOutcomeEvent");

/// From the admin tool to the daemon: perform a schedule now, whatever its date. Sender: admin. Key:
/// scheduleIdentifier. Obeyed from root and the schedule's owner.
inline constexpr QLatin1StringView daemonMustRunNow("DaemonMustRunNowEvent");

/// From an agent that has just started to the daemon: announce again what its user was alerted of before.
/// Sender: userAgent. No keys. Obeyed from the user at the console.
inline constexpr QLatin1StringView daemonMustAnticipateAgain("DaemonMustAnticipateAgainEvent");
} // namespace OrderName

/// The objects of orders. What hands an occurrence over names the role that is to have it, the others name
/// who asks.
namespace OrderSender
{
inline constexpr QLatin1StringView userAgent("com.dozely.UserAgent");
inline constexpr QLatin1StringView daemon("com.dozely.Daemon");
inline constexpr QLatin1StringView admin("com.dozely.Admin");
inline constexpr QLatin1StringView application("com.dozely.App");
} // namespace OrderSender

/// The keys of an order's user info.
namespace OrderKey
{
inline constexpr QLatin1StringView bundlePath("Schedule Bundle Path");        ///< QString, the full path.
inline constexpr QLatin1StringView date("Schedule Date");                     ///< QDateTime, with its zone.
inline constexpr QLatin1StringView parameters("Schedule Parameters");         ///< QVariantMap.
inline constexpr QLatin1StringView scheduleIdentifier("Schedule Identifier"); ///< QString, as in the store.
inline constexpr QLatin1StringView scheduleName("Schedule Name");             ///< QString, for people.
inline constexpr QLatin1StringView outcome("Schedule Outcome");               ///< QString, an OrderOutcome.
inline constexpr QLatin1StringView failure("Schedule Failure");               ///< QString, why: a clause.
inline constexpr QLatin1StringView exitStatus("Schedule Exit Status"); ///< Integer, of the program it ran.
inline constexpr QLatin1StringView output("Schedule Output");          ///< QByteArray, what it wrote last.
inline constexpr QLatin1StringView delay("Schedule Delay");            ///< Integer, seconds, at least 1.

/// Boolean: of the schedule's whole day, in its own time zone. Missing: false.
inline constexpr QLatin1StringView wholeDay("Schedule Whole Day");

/// Boolean: not to be performed while another action of the schedule goes on. Missing: false.
inline constexpr QLatin1StringView skipsOverlap("Schedule Skips Overlap");
} // namespace OrderKey

/// What became of an occurrence.
namespace OrderOutcome
{
inline constexpr QLatin1StringView performed("done");
inline constexpr QLatin1StringView notPerformed("not performed"); ///< Certainly, nor its program.
inline constexpr QLatin1StringView failed("failed");              ///< Begun, but not to a good end.
inline constexpr QLatin1StringView skipped("skipped"); ///< For the sake of skipsOverlap: it was not begun.
} // namespace OrderOutcome

/// The keys of the user info of the alert that WDUserAgentPlugIn shows, for those who show or answer it.
namespace AlertKey
{
inline constexpr QLatin1StringView
    date("Schedule Date"); ///< QDateTime: when the action runs unless it is cancelled.
} // namespace AlertKey

/// Fixed paths, to be joined to the root folder (RootFolder::join).
namespace FixedPath
{
/// Where the plug-in bundles of all users lie, and, below a home folder, those for the agent of that user
/// alone.
inline constexpr QLatin1StringView plugIns("/Library/Application Support/Dozely/PlugIns");
} // namespace FixedPath

} // namespace dozely
