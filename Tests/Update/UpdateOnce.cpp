// Runs one update and ends, for the tests that kill it: UpdateOnce URL SHA256 BUNDLE.

#include "Tests/Helpers/RunTask.h"
#include "TunedeckCore/Update/UpdateInstaller.h"

#include <QCoreApplication>

using namespace tunedeck::test;

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    tunedeck::Release release;
    release.version = u"1.4.1"_s;
    release.url = arguments.value(1);
    release.sha256 = arguments.value(2);
    const auto result =
        runToEnd(tunedeck::UpdateInstaller::install(release, arguments.value(3), u"com.brightfold.tunedeck.menu"_s,
                                                    tunedeck::Downloader(QStringLiteral(TUNEDECK_FETCH)), {}, {}));
    return result ? 0 : 1;
}
