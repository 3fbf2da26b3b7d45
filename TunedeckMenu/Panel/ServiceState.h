#pragma once

#include "TunedeckCore/Service/ServiceStatus.h"

#include <variant>

namespace tunedeck {

/// The last known state of the service.
struct ServiceState {
    struct Checking {
        bool operator==(const Checking&) const = default;
    };
    struct NotRunning {
        bool operator==(const NotRunning&) const = default;
    };

    std::variant<Checking, NotRunning, ServiceStatus> value = Checking{};

    static ServiceState checking() { return {Checking{}}; }
    static ServiceState notRunning() { return {NotRunning{}}; }
    static ServiceState running(ServiceStatus status) { return {std::move(status)}; }

    /// The status document of a running service, else null.
    [[nodiscard]] const ServiceStatus* status() const { return std::get_if<ServiceStatus>(&value); }
    [[nodiscard]] bool isRunning() const { return status() != nullptr; }
    [[nodiscard]] bool isNotRunning() const { return std::holds_alternative<NotRunning>(value); }
    bool operator==(const ServiceState&) const = default;
};

} // namespace tunedeck
