#include "TunedeckCore/Support/Async/HelperProgram.h"

#include <QCoreApplication>

#include <memory>
#include <optional>

namespace tunedeck {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype maxLine = 64 * 1024;

/// Parser of the helper's reports.
struct Reports {
    std::function<void(const QList<QByteArray>& words)> onProgress;
    QByteArray buffer = {};
    std::optional<QString> result = {};

    void append(const QByteArray& part) {
        buffer += part;
        for (qsizetype end = buffer.indexOf('\n'); end >= 0; end = buffer.indexOf('\n')) {
            parseLine(buffer.left(end));
            buffer.remove(0, end + 1);
        }
        if (buffer.size() > maxLine) {
            buffer.clear();
        }
    }

    void parseLine(const QByteArray& line) {
        const QList<QByteArray> words = line.split(' ');
        if (words[0] == "result" && words.size() == 2) {
            result = QString::fromUtf8(QByteArray::fromPercentEncoding(words[1]));
        } else if (words[0] == "progress" && onProgress) {
            onProgress(words.mid(1));
        }
    }
};

} // namespace

QCoro::Task<std::expected<HelperResult, QString>> runHelper(QString program, HelperRequest request,
                                                            std::stop_token stop) {
    const auto reports = std::make_shared<Reports>(std::move(request.onProgress));
    ProcessRequest process{
        .program = program,
        .arguments =
            QStringList{request.subcommand, QString::number(QCoreApplication::applicationPid())} + request.operands,
        .input = request.input,
        .onOutput = request.onOutput,
        .onError =
            [reports](const QByteArray& part) {
                reports->append(part);
                return true;
            },
        .timeLimit = request.timeLimit,
    };
    const auto ended = co_await runProcess(process, stop);
    if (!ended) {
        co_return std::unexpected(ended.error());
    }
    const auto text = reports->result;
    if (!text || ended->exitStatus > static_cast<int>(HelperStatus::Unexpected)) {
        co_return std::unexpected(u"The helper program %1 ended unexpectedly."_s.arg(program));
    }
    co_return HelperResult{static_cast<HelperStatus>(ended->exitStatus), *text};
}

} // namespace tunedeck
