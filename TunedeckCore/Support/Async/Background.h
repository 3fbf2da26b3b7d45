#pragma once

#include "TunedeckCore/Support/Async/Wait.h"

#include <QCoreApplication>
#include <QCoroTask>
#include <QMetaObject>

#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <thread>

namespace tunedeck {

/// Runs blocking work on a separate thread. The work gets the token and should check it between its steps. Returns
/// nothing when stopped early; the thread may then still be running. Rethrows the work's exception.
template<class T>
QCoro::Task<std::optional<T>> inBackground(std::function<T(std::stop_token)> work, std::stop_token stop) {
    struct Shared {
        std::optional<T> result;
        std::exception_ptr exception;
        Wait* wait = nullptr;
    };
    Wait wait(stop);
    const auto shared = std::make_shared<Shared>(Shared{.wait = &wait});
    std::thread([work = std::move(work), shared, stop]() mutable {
        try {
            shared->result.emplace(work(stop));
        } catch (...) {
            shared->exception = std::current_exception();
        }
        work = nullptr; // destroy its captures before the caller resumes
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [shared] {
                if (shared->wait) {
                    shared->wait->wake();
                }
            },
            Qt::QueuedConnection);
    }).detach();
    const bool done = co_await wait.next();
    shared->wait = nullptr;
    if (done && shared->exception) {
        std::rethrow_exception(shared->exception);
    }
    co_return done ? std::move(shared->result) : std::nullopt;
}

} // namespace tunedeck
