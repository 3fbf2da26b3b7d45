#include "DemoService/Files/RuntimeFile.h"

#include "DemoService/Files/JsonFile.h"
#include "TunedeckCore/Support/Json/Value.h"

#include <QCoreApplication>
#include <QFile>

namespace tunedeck::demo {

using namespace Qt::StringLiterals;

std::expected<void, QString> RuntimeFile::publish(int port) const {
    const json::Object content{{u"port"_s, port}, {u"pid"_s, QCoreApplication::applicationPid()}};
    return writeFile(m_path, json::prettyText(content));
}

void RuntimeFile::withdraw() const {
    const auto content = readObject(m_path);
    const auto* pid = content.find("pid"_L1);
    if (pid != nullptr && *pid == json::Value(QCoreApplication::applicationPid())) {
        QFile::remove(m_path);
    }
}

} // namespace tunedeck::demo
