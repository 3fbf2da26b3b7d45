#include "TunedeckMenu/App/CommandLine.h"

#include "TunedeckCore/Service/LinksClient.h"
#include "TunedeckCore/Service/ServiceEndpoint.h"
#include "TunedeckCore/Service/ToolboxClient.h"
#include "TunedeckCore/Support/Http/LocalHttp.h"
#include "TunedeckCore/Support/Text/Text.h"
#include "TunedeckMenu/Actions/DiagnosticsReport.h"
#include "TunedeckMenu/Checkup/CheckupReport.h"
#include "TunedeckMenu/Panel/HeaderView.h"
#include "TunedeckMenu/Panel/PanelState.h"

#include <QCommandLineParser>

#include <algorithm>
#include <chrono>
#include <utility>
#include <vector>

namespace tunedeck {

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

std::expected<CommandLine, QString> CommandLine::parse(const QStringList& arguments) {
    static const QHash<QString, Command> commands{
        {u"h"_s, Command::Help},        {u"help"_s, Command::Help},       {u"version"_s, Command::Version},
        {u"status"_s, Command::Status}, {u"checkup"_s, Command::Checkup}, {u"diagnostics"_s, Command::Diagnostics},
        {u"quit"_s, Command::Quit},     {u"remove"_s, Command::Remove}};
    QCommandLineParser parser;
    for (const auto& name : commands.keys()) {
        parser.addOption(QCommandLineOption(name));
    }
    parser.addOptions({{u"json"_s, {}}, {u"online"_s, {}}, {u"show"_s, {}}, {u"after"_s, {}, u"PID"_s}});
    const auto written = [](const QString& name) { return (name.size() == 1 ? u"-"_s : u"--"_s) + name; };

    const bool isValid = parser.parse(QStringList(u"Tunedeck"_s) + arguments);
    if (const auto unknown = parser.unknownOptionNames(); !unknown.isEmpty()) {
        return std::unexpected(u"there is no option “%1”"_s.arg(written(unknown.first())));
    }
    if (const auto extra = parser.positionalArguments(); !extra.isEmpty()) {
        return std::unexpected(u"there is no option “%1”"_s.arg(extra.first()));
    }
    CommandLine result{
        .json = parser.isSet(u"json"_s), .online = parser.isSet(u"online"_s), .show = parser.isSet(u"show"_s)};
    if (parser.isSet(u"after"_s)) {
        bool isNumber = false;
        result.afterProcess = parser.value(u"after"_s).toLongLong(&isNumber);
        if (!isNumber || *result.afterProcess <= 0) {
            return std::unexpected(u"--after needs the id of a process"_s);
        }
    }
    if (!isValid) { // a value for an option that takes none
        return std::unexpected(parser.errorText().chopped(1));
    }
    for (const auto& name : parser.optionNames()) {
        if (!commands.contains(name)) {
            continue;
        }
        if (result.command != Command::Run) {
            return std::unexpected(u"“%1” can't be combined with another command"_s.arg(written(name)));
        }
        result.command = commands[name];
    }
    if (result.json && result.command != Command::Status && result.command != Command::Checkup) {
        return std::unexpected(u"--json goes with --status or --checkup"_s);
    }
    if (result.online && result.command != Command::Checkup) {
        return std::unexpected(u"--online goes with --checkup"_s);
    }
    if ((result.show || result.afterProcess) && result.command != Command::Run) {
        return std::unexpected(u"--show and --after go with no other command"_s);
    }
    return result;
}

QString CommandLine::help() {
    return uR"(Usage: Tunedeck [OPTION]

Starts Tunedeck, or opens the window of the running instance.

  --show         open the window at once
  --quit         quit the running Tunedeck; the background service keeps running
  --status       print one line about the background service; the exit status is 0 when it runs
  --status --json
                 print the service's status document
  --checkup      check everything that Tunedeck needs, and print what to do; the exit status
                 is 1 if there is a problem
  --checkup --online
                 also check for an update
  --checkup --json
                 print the results for scripts
  --diagnostics  print the report for support, with secrets masked
  --remove       remove the background service and everything that starts Tunedeck
                 automatically from your account; music, settings and backups stay
  --after PID    wait until that process has exited, then start
  --version      print the version
  --help         print this help
)"_s;
}

QCoro::Task<CommandResult> statusCommand(StatusClient client) {
    auto status = co_await client.fetch();
    const bool isRunning = status.has_value();
    const auto service = isRunning ? ServiceState::running(std::move(*status)) : ServiceState::notRunning();
    co_return CommandResult{withoutControls(statusLine(service)) + u'\n', isRunning ? 0 : 1};
}

/// A JSON document with escapes for the characters in its texts that could control a terminal.
QString escapingControls(const QString& document) {
    const QString clean = withoutControls(document);
    QString safe;
    for (qsizetype i = 0; i < document.size(); ++i) {
        const QChar each = document[i];
        const bool isSafe = each == clean[i] || each == u'\n' || each == u'\r';
        safe += isSafe ? QString(each) : u"\\u%1"_s.arg(each.unicode(), 4, 16, QChar(u'0'));
    }
    return safe;
}

QCoro::Task<CommandResult> statusDocumentCommand(StatusClient client) {
    // The document as the service sent it, including members that this version doesn't know.
    const auto url =
        client.url.value_or(appendingPath(ServiceEndpoint::base(ServiceEndpoint::runtimeFile()), "local/status"));
    const HttpRequest request{.method = HttpMethod::Get, .url = url, .timeout = 2s};
    const auto reply = co_await sendLocal(request, {});
    if (!reply || reply->status != 200 || !ServiceStatus::decode(reply->body)) {
        co_return CommandResult{u"null\n"_s, 1};
    }
    co_return CommandResult{escapingControls(QString::fromUtf8(reply->body.trimmed())) + u'\n', 0};
}

QCoro::Task<CommandResult> checkupCommand(CheckupInput input, bool json) {
    const auto results = co_await checkup(std::move(input));
    const bool hasProblem =
        std::ranges::find(results, CheckResult::Level::Problem, &CheckResult::level) != results.end();
    co_return CommandResult{json ? checkupJson(results) : checkupText(results), hasProblem ? 1 : 0};
}

QCoro::Task<CommandResult> diagnosticsCommand(SystemFacts facts, QDateTime now) {
    PanelState state{.appVersion = facts.appVersion};
    const StatusClient statusClient;
    auto status = co_await statusClient.fetch();
    if (status) {
        const ToolboxClient toolboxClient;
        state.toolbox = co_await toolboxClient.fetch();
        const LinksClient linksClient;
        auto links = co_await linksClient.list();
        state.links = std::move(links).value_or(std::vector<AssistantLink>());
        state.service = ServiceState::running(std::move(*status));
    }
    co_return CommandResult{diagnosticsReport(state, facts, now) + u'\n', 0};
}

} // namespace tunedeck
