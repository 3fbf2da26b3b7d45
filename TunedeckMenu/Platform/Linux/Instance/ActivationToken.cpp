#include "TunedeckMenu/Platform/Linux/Instance/ActivationToken.h"

#include <algorithm>

namespace tunedeck {
namespace {

constexpr auto waylandVariable = "XDG_ACTIVATION_TOKEN";
constexpr auto x11Variable = "DESKTOP_STARTUP_ID";

bool isPlausible(const QByteArray& token) {
    return !token.isEmpty() && token.size() <= 256 &&
           std::ranges::all_of(token, [](char c) { return c > ' ' && c < 127; });
}

} // namespace

QByteArray ownActivationToken() {
    auto token = qgetenv(waylandVariable);
    if (token.isEmpty()) {
        token = qgetenv(x11Variable);
    }
    return token;
}

void useActivationToken(const QByteArray& token) {
    if (isPlausible(token)) {
        qputenv(waylandVariable, token);
        qputenv(x11Variable, token);
    }
}

} // namespace tunedeck
