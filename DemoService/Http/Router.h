#pragma once

#include "DemoService/World/World.h"

#include <string>

namespace tunedeck::demo {

/// An HTTP request, as far as the service looks at it.
struct Request {
    std::string method;
    /// The path as it was sent, percent-encoded, with its query.
    std::string target;
    std::string body;
};

/// An HTTP reply; the body is JSON, or empty.
struct Reply {
    int status = 200;
    std::string body;
    /// The methods that would have been allowed, with status 405.
    std::string allow;
    /// The work took a while: how long to keep the caller waiting.
    Span delay{};
};

/// What of a status document doesn't come from the world.
struct ServiceFacts {
    std::string version;
    HomePaths paths;
    int port = 0;
};

/// Answers one request at a moment. The world must be up to that moment.
Reply answer(World& world, const ServiceFacts& facts, const Request& request, Moment now);

/// The status document.
std::string statusText(const World& world, const ServiceFacts& facts);

} // namespace tunedeck::demo
