#include "Tests/Soak/Driver/Unit.h"

#include "Tests/Soak/Driver/Subject.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <csignal>

namespace tunedeck::soak {

using namespace Qt::StringLiterals;

namespace {

void ask(const QString& order) {
    QProcess::startDetached(u"systemctl"_s,
                            {u"--user"_s, u"--no-block"_s, order, u"com.brightfold.tunedeck.service"_s});
}

} // namespace

void Unit::stop() {
    ask(u"stop"_s);
}

void Unit::revive() const {
    if (!signal(0)) {
        ask(u"restart"_s); // a mere start would wait for the manager's own
    }
}

bool Unit::signal(int number) const {
    QFile file(QString::fromStdString((m_files.home / ".tunedeck" / "runtime.json").string()));
    if (!file.open(QIODevice::ReadOnly)) {
        return false;
    }
    const auto process = QJsonDocument::fromJson(file.readAll()).object().value(u"pid"_s).toInt();
    // The number may be another program's by now.
    const auto program = QFile::symLinkTarget(u"/proc/%1/exe"_s.arg(process));
    return program.startsWith(QString::fromStdString(m_files.home.string())) && ::kill(process, number) == 0;
}

int Unit::starts() const {
    std::error_code none;
    const auto size = std::filesystem::file_size(m_files.starts(), none);
    return none ? 0 : static_cast<int>(size);
}

QStringList Unit::all() {
    QStringList units;
    const auto text =
        outputOf(u"systemctl"_s, {u"--user"_s, u"list-units"_s, u"--all"_s, u"--plain"_s, u"--no-legend"_s});
    for (const auto& line : text.split(u'\n', Qt::SkipEmptyParts)) {
        const auto parts = line.simplified().split(u' ');
        units << parts.value(0) + u' ' + parts.value(2);
    }
    units.sort();
    return units;
}

} // namespace tunedeck::soak
