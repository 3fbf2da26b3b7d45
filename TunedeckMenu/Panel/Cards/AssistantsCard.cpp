#include "TunedeckMenu/Panel/Cards/AssistantsCard.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

void describeCloud(AssistantsView& card, const ServiceStatus::Cloud& cloud) {
    if (!cloud.connected) {
        card.cloudText = u"Cloud queue on."_s;
    } else if (*cloud.connected) {
        card.cloudText = u"Connected to Tunedeck cloud: requests arrive instantly."_s;
        card.cloudTone = look::Tone::Good;
    } else {
        card.cloudText = u"Not connected right now. Requests wait in the cloud until this Mac is back."_s;
        card.cloudTone = look::Tone::Warning;
    }
}

} // namespace

AssistantsView assistantsCard(const PanelState& state, const QDateTime& now, RowRange links) {
    AssistantsView card{
        .revealSymbol = state.revealSecrets ? u"eye.slash"_s : u"eye"_s,
        .busy = state.linksBusy,
    };
    if (!state.links.empty()) {
        card.revealLabel =
            state.revealSecrets ? u"Hide the private URLs and keys"_s : u"Show the private URLs and keys"_s;
    } else {
        card.emptyText = u"Connect one, then ask for tracks or playlist changes from your phone, even while "
                         "this Mac sleeps."_s;
    }
    card.links = linkRows(state, now, links);
    for (const Assistant assistant : allAssistants) {
        if (std::ranges::none_of(state.links, [&](const auto& link) { return link.assistant() == assistant; })) {
            card.connect << connectRow(assistant, u"plus"_s, state.linksBusy);
        }
    }
    if (const ServiceStatus* status = state.service.status(); status && status->cloud.enabled) {
        describeCloud(card, status->cloud);
    }
    return card;
}

} // namespace tunedeck
