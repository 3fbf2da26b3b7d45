#include "Tests/Helpers/Test.h"
#include "TunedeckCore/Service/ServiceEndpoint.h"

#include <sys/stat.h>

namespace tunedeck::test {
namespace {

const QUrl standard(u"http://127.0.0.1:8000"_s);

QByteArray baseOf(const TemporaryHome& home, const QByteArray& bytes) {
    return ServiceEndpoint::base(home.write(u".tunedeck/runtime.json"_s, bytes)).toEncoded();
}

TEST(ServiceEndpoint, ReadsThePortFromTheRuntimeFile) {
    const TemporaryHome home;
    EXPECT_EQ(ServiceEndpoint::runtimeFile(), home.path(u".tunedeck/runtime.json"_s));
    EXPECT_EQ(baseOf(home, R"({"port": 65535})"), "http://127.0.0.1:65535");
    EXPECT_EQ(baseOf(home, R"({"pid": 4, "x": {"port": 3, "y": [1.5, null]}, "port": 1})"), "http://127.0.0.1:1");
}

TEST(ServiceEndpoint, FallsBackForInvalidFiles) {
    const TemporaryHome home;
    for (const auto* value : {"true", "8123.0", "8123e0", "\"8001\"", "0", "65536", "-1", "4294975296"}) {
        EXPECT_EQ(baseOf(home, QByteArray(R"({"port": )") + value + '}'), standard.toEncoded()) << value;
    }
    for (const auto* file : {"[8123]", R"({"port": 8123} x)", R"({"Port": 8123})"}) {
        EXPECT_EQ(baseOf(home, file), standard.toEncoded()) << file;
    }
    EXPECT_EQ(ServiceEndpoint::base(home.path(u"none"_s)), standard);
    EXPECT_EQ(ServiceEndpoint::base(u"/dev/zero"_s), standard);
    const auto fifo = home.path(u"fifo"_s);
    ASSERT_EQ(mkfifo(fifo.toLocal8Bit().constData(), 0600), 0);
    EXPECT_EQ(ServiceEndpoint::base(fifo), standard);
    EXPECT_EQ(baseOf(home, R"({"port": 8123})" + QByteArray(1024 * 1024, ' ')), standard.toEncoded());
}

} // namespace
} // namespace tunedeck::test
