#pragma once

#include "DemoService/Library/Library.h"
#include "DemoService/World/Cloud.h"
#include "DemoService/World/DownloadFolder.h"
#include "DemoService/World/Jobs.h"
#include "DemoService/World/Links.h"
#include "DemoService/World/Random.h"
#include "DemoService/World/Toolbox.h"
#include "TunedeckCore/Support/Json/Record.h"

#include <QByteArray>
#include <QString>

#include <expected>
#include <optional>

namespace tunedeck::demo {

/// Everything that the service keeps between two runs.
struct State {
    QString scenario;
    Random random;
    bool livelyWhenConnected = false; ///< requests start to arrive once an assistant is connected
    Jobs jobs;
    std::optional<Library> library; ///< absent when there is no Rekordbox library
    Links links;
    Toolbox toolbox;
    Cloud cloud;
    std::optional<DownloadFolder> stagedFolder; ///< shown in place of the default folder, without being checked

    /// The content of the state file.
    QByteArray text() const { return json::prettyText(json::encode(*this, json::Form::Complete)); }
    /// Reads the content of a state file.
    static std::expected<State, json::Error> fromText(const QByteArray& text) {
        return json::decode<State>(text, json::Keys::AsWritten);
    }

    static constexpr auto members =
        json::members<&State::scenario, &State::random, &State::livelyWhenConnected, &State::jobs, &State::library,
                      &State::links, &State::toolbox, &State::cloud, &State::stagedFolder>;
};

} // namespace tunedeck::demo
