#include "TunedeckMenu/App/CommandLine.h"

#include "TunedeckCore/Service/LinksClient.h"
#include "TunedeckCore/Service/ServiceEndpoint.h"
#include "TunedeckCore/Service/ToolboxClient.h"
#include "TunedeckCore/Support/Http/LocalHttp.h"
#include "TunedeckMenu/Actions/DiagnosticsAction.h"
#include "TunedeckMenu/Panel/HeaderView.h"
#include "TunedeckMenu/Panel/PanelState.h"

#include <chrono>
#include <utility>
#include <vector>

namespace tunedeck {

using namespace std::chrono_literals;

std::expected<CommandLine, QString> CommandLine::parse(const QStringList& arguments) {
    CommandLine wish;
    const auto choose = [&wish](Command command) {
        const bool isFirst = wish.command == Command::run;
        wish.command = command;
        return isFirst;
    };
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const auto& argument = arguments[i];
        bool fits = true;
        if (argument == QStringLiteral("--help") || argument == QStringLiteral("-h")) {
            fits = choose(Command::help);
        } else if (argument == QStringLiteral("--version")) {
            fits = choose(Command::version);
        } else if (argument == QStringLiteral("--status")) {
            fits = choose(Command::status);
        } else if (argument == QStringLiteral("--diagnostics")) {
            fits = choose(Command::diagnostics);
        } else if (argument == QStringLiteral("--quit")) {
            fits = choose(Command::quit);
        } else if (argument == QStringLiteral("--remove")) {
            fits = choose(Command::remove);
        } else if (argument == QStringLiteral("--json")) {
            wish.json = true;
        } else if (argument == QStringLiteral("--show")) {
            wish.show = true;
        } else if (argument == QStringLiteral("--after")) {
            bool isNumber = false;
            wish.afterProcess = arguments.value(++i).toLongLong(&isNumber);
            if (!isNumber || *wish.afterProcess <= 0) {
                return std::unexpected(QStringLiteral("--after needs the id of a process"));
            }
        } else {
            return std::unexpected(QStringLiteral("there is no option “%1”").arg(argument));
        }
        if (!fits) {
            return std::unexpected(QStringLiteral("“%1” can't be combined with another command").arg(argument));
        }
    }
    if (wish.json && wish.command != Command::status) {
        return std::unexpected(QStringLiteral("--json goes with --status"));
    }
    if ((wish.show || wish.afterProcess) && wish.command != Command::run) {
        return std::unexpected(QStringLiteral("--show and --after go with no other command"));
    }
    return wish;
}

QString CommandLine::help() {
    return QStringLiteral(R"(Usage: Tunedeck [OPTION]

Starts Tunedeck, or brings the window of the one that runs to the front.

  --show         open the window at once
  --quit         end the Tunedeck that runs; the background service goes on
  --status       print one line about the background service; the exit status is 0 when it runs
  --status --json
                 print the service's status document
  --diagnostics  print the report for support, with secrets masked
  --remove       remove the background service and all that starts Tunedeck by
                 itself from your account; music, settings and backups stay
  --after PID    wait until that process is gone, then start
  --version      print the version
  --help         print this
)");
}

QCoro::Task<CommandResult> statusCommand(StatusClient client, bool json) {
    if (!json) {
        auto status = co_await client.fetch();
        const bool isRunning = status.has_value();
        const auto service = isRunning ? ServiceState::running(std::move(*status)) : ServiceState::notRunning();
        co_return CommandResult{statusLine(service) + u'\n', isRunning ? 0 : 1};
    }
    // The document as the service sent it, also the members that this version doesn't know.
    const auto url = client.url.value_or(
        appendingPath(ServiceEndpoint::base(ServiceEndpoint::runtimeFile()), QByteArrayLiteral("local/status")));
    const HttpRequest request{.method = HttpMethod::Get, .url = url, .timeout = 2s};
    const auto reply = co_await sendLocal(request, {});
    if (!reply || reply->status != 200 || !ServiceStatus::decode(reply->body)) {
        co_return CommandResult{QStringLiteral("null\n"), 1};
    }
    co_return CommandResult{QString::fromUtf8(reply->body.trimmed()) + u'\n', 0};
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
