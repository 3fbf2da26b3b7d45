#include "DemoService/Files/RuntimeFile.h"

#include "DemoService/Files/Files.h"
#include "DemoService/Files/Record.h"

namespace tunedeck::demo {

namespace {

struct Runtime {
    int port = 0;
    std::int64_t pid = 0;

    static void members(auto& self, auto& archive) {
        archive("port", self.port);
        archive("pid", self.pid);
    }
};

} // namespace

std::string RuntimeFile::publish(int port, pid_t process) {
    return writeFileAtomically(m_path, recordText(Runtime{port, process}, Audience::client) + "\n");
}

void RuntimeFile::withdraw(pid_t process) {
    const auto text = readFile(m_path);
    const auto document = text ? parseObject(*text) : std::nullopt;
    if (!document) {
        return;
    }
    Runtime runtime;
    RecordReader reader(*document);
    Runtime::members(runtime, reader);
    if (runtime.pid == process) {
        std::error_code ignored;
        std::filesystem::remove(m_path, ignored);
    }
}

} // namespace tunedeck::demo
