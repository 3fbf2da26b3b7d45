#include "DemoService/World/State.h"

#include "TunedeckCore/Support/Json/Record.h"
#include "TunedeckCore/Support/Json/Value.h"

namespace tunedeck::demo {

QByteArray State::text() const {
    return json::prettyText(json::encode(*this, json::Form::Complete));
}

std::expected<State, QString> State::fromText(const QByteArray& text) {
    auto state = json::decode<State>(text, json::Keys::AsWritten);
    if (!state) {
        return std::unexpected(state.error().description());
    }
    return std::move(*state);
}

} // namespace tunedeck::demo
