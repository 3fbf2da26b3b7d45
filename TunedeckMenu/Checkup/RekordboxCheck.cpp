#include "TunedeckCore/RekordboxInstall.h"
#include "TunedeckCore/Support/Text/Text.h"
#include "TunedeckMenu/Checkup/Checks.h"

namespace tunedeck::checks {

using namespace Qt::StringLiterals;

CheckResult rekordbox(const CheckContext& context) {
    if (!context.status) {
        return serviceNeeded();
    }
    const auto& library = context.status->rekordboxDb;
    if (!library) {
        const auto install = RekordboxInstall::detect(u"/Applications"_s);
        return CheckResult::warning((install ? install->name + u" is installed, but its"_s : u"A"_s) +
                                        u" library wasn't found."_s,
                                    u"Start Rekordbox once, then press “Restart tunedeck” in the panel."_s);
    }
    const auto count = [](const auto& list) { return static_cast<std::int64_t>(list.size()); };
    if (!library->failed.empty()) {
        return CheckResult::warning(counted(count(library->failed), u"change"_s) + u" couldn't be applied."_s,
                                    u"Press “Retry” in the Rekordbox card of the panel."_s);
    }
    const auto changes = counted(count(library->pending), u"change"_s);
    if (library->rekordboxRunning) {
        return library->pending.empty()
                   ? CheckResult::ok(u"The library was found; Rekordbox is open."_s)
                   : CheckResult::warning(u"Waiting until Rekordbox is closed: "_s + changes + u'.',
                                          u"Quit Rekordbox."_s);
    }
    if (library->lastError) {
        return CheckResult::warning(u"The last change failed: "_s + *library->lastError, u"The service tries again."_s);
    }
    return CheckResult::ok(u"The library was found; Rekordbox is closed."_s);
}

} // namespace tunedeck::checks
