#include "TunedeckMenu/Panel/Cards/AboutCard.h"

#include "TunedeckCore/Support/Text/Text.h"
#include "TunedeckMenu/Panel/ShownText.h"

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

/// Adds the texts for one state of the update.
struct DescribeUpdate {
    AboutView& card;
    const QDateTime& now;

    void operator()(const UpdateState::Idle&) const { card.updateText = u"Tunedeck checks for updates once a day."_s; }
    void operator()(const UpdateState::Checking&) const {
        card.updateText = u"Checking for updates…"_s;
        card.busy = true;
    }
    void operator()(const UpdateState::UpToDate& state) const {
        card.updateText = u"Up to date · checked "_s + relativeDate(state.at, now);
    }
    void operator()(const UpdateState::Available& state) const {
        card.updateText = u"Tunedeck %1 is available."_s.arg(state.release.version);
        card.updateDetail = paragraph(state.release.notes.value_or(QString()));
        card.updateButton = u"Update to "_s + state.release.version;
    }
    void operator()(const UpdateState::Installing& state) const {
        card.updateText = u"Installing the update… Tunedeck restarts when it's done."_s;
        card.busy = true;
        card.progress = state.progress.value_or(-1);
    }
    void operator()(const UpdateState::Failed& state) const {
        card.updateText = u"Couldn't check for updates: "_s + paragraph(state.message);
    }
};

} // namespace

AboutView aboutCard(const QString& appVersion, const UpdateState& update, const QDateTime& now) {
    AboutView card{.version = u"Version "_s + appVersion};
    std::visit(DescribeUpdate{card, now}, update.value);
    card.busyHelp = card.busy ? card.updateText : QString();
    return card;
}

} // namespace tunedeck
