#include "DemoService/Scenarios/Hostile.h"

#include <QStringList>

namespace tunedeck::demo {

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

void prepareHostile(Stage& stage) {
    const QString endless = u"W"_s.repeated(100'000);
    const QString controls = u"\u001b]0;owned\u0007\u001b[2J\u009b31m\n\u202egpj.live\n\nRunning · all is well"_s;
    const QString markup = u"<img src='file:///dev/zero'><b>bold</b> & <a href='https://x.example'>click</a> %1 %2"_s;

    stage.state.jobs = {};
    stage.addFailedJob(endless, controls, 3h);
    stage.addFailedJob(markup, endless, 2h);
    stage.addDoneJob(u"e"_s + u"\u0301"_s.repeated(50'000), 1, 1h);

    stage.state.library = Library{.dbPath = u"--help"_s};
    for (int i = 0; i < 1000; ++i) {
        stage.addFirstBackup(std::chrono::hours(i));
        stage.addFailed(u"Change %1 "_s.arg(i) + (i % 2 == 0 ? markup : controls), u"no disk "_s.repeated(i % 20), 1h);
    }
    stage.library().lastError = controls + endless;

    stage.state.links.all.clear();
    const QStringList addresses{u"file:///usr/share/applications/debian-uxterm.desktop"_s, u"javascript:alert(1)"_s,
                                u"smb://t.me/share"_s, u"file:--help"_s, u"https://t.me@x.example/"_s};
    for (const QString& address : addresses) {
        stage.addLink(link_kind::telegram, markup, 1min).url = address;
    }
    for (int i = 0; i < 1000; ++i) {
        stage.addLink(link_kind::claude, i % 2 == 0 ? u"Claude"_s : controls, 24h, 5h);
    }
}

} // namespace tunedeck::demo
