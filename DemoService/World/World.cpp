#include "DemoService/World/World.h"

#include "TunedeckCore/Support/Text/Text.h"

namespace tunedeck::demo {

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

void becomeLively(State& state, StepContext& context) {
    state.livelyWhenConnected = false;
    state.jobs.nextArrival = context.afterBetween(8s, 15s);
    if (state.library) {
        state.library->failurePercent = 8;
        state.library->toggleAt = context.afterBetween(2min, 4min);
    }
    context.info("service"_L1, u"an assistant is connected, requests will arrive"_s);
}

void receiveRequest(State& state, StepContext& context) {
    state.jobs.nextArrival = context.afterBetween(50s, 140s);
    // Requests come from an assistant and through the cloud.
    if (state.links.anyConnected() && state.cloud.connected.value_or(false)) {
        state.jobs.request(context);
        state.links.noteUse(context);
    }
}

void addToLibrary(Library& library, const Job& job, StepContext& context) {
    const bool newPlaylist = context.random.chance(30);
    library.enqueue(context,
                    u"Add "_s + counted(job.tracks.value_or(0), u"track"_s) + u" to "_s +
                        (newPlaylist ? u"the new playlist "_s : QString()) + inQuotes(job.playlist),
                    newPlaylist ? Library::Minor : Library::Patch);
}

} // namespace

void World::advance(Moment now) {
    update(now, [](State& state, StepContext& context) {
        state.cloud.advance(context);
        state.toolbox.advance(context);
        state.links.advance(context);
        if (state.livelyWhenConnected && state.links.anyConnected()) {
            becomeLively(state, context);
        }
        if (context.isDue(state.jobs.nextArrival)) {
            receiveRequest(state, context);
        }
        for (const Job& job : state.jobs.advance(context, state.toolbox.ready())) {
            if (state.library) {
                addToLibrary(*state.library, job, context);
            }
        }
        if (state.library) {
            state.library->advance(context);
        }
    });
}

std::optional<Moment> World::nextEvent() const {
    auto next = earlier(m_state.cloud.changeAt, m_state.toolbox.stepEnd);
    next = earlier(next, m_state.links.nextEvent());
    next = earlier(next, m_state.jobs.nextEvent(m_state.toolbox.ready()));
    if (m_state.library) {
        next = earlier(next, earlier(m_state.library->applyAt, m_state.library->toggleAt));
    }
    return next;
}

} // namespace tunedeck::demo
