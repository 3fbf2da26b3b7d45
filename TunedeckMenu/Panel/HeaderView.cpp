#include "TunedeckMenu/Panel/HeaderView.h"

#include "TunedeckMenu/Panel/ShownText.h"

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

look::Tone headerTone(const ServiceState& service) {
    if (service.isNotRunning()) {
        return look::Tone::Bad;
    }
    const ServiceStatus* status = service.status();
    if (!status || !status->cloud.enabled) {
        return look::Tone::Secondary;
    }
    return status->cloud.connected.value_or(true) ? look::Tone::Good : look::Tone::Warning;
}

} // namespace

QString statusLine(const ServiceState& service) {
    if (service.isNotRunning()) {
        return u"Not running"_s;
    }
    const ServiceStatus* status = service.status();
    if (!status) {
        return u"Checking…"_s;
    }
    if (!status->cloud.enabled) {
        return u"Running · cloud off"_s;
    }
    if (!status->cloud.connected) {
        return u"Running · v"_s + oneLine(status->version);
    }
    return *status->cloud.connected ? u"Running · connected to the cloud"_s : u"Running · cloud not reachable yet"_s;
}

HeaderView headerView(const ServiceState& service) {
    return {.status = statusLine(service), .tone = headerTone(service)};
}

} // namespace tunedeck
