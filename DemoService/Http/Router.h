#pragma once

#include "DemoService/Http/Message.h"
#include "DemoService/Http/StatusDocument.h"
#include "DemoService/World/World.h"

namespace tunedeck::demo {

/// Handles one request at `now`. The world must have been advanced to that time.
Response respond(World& world, const ServiceFacts& facts, const Request& request, Moment now);

} // namespace tunedeck::demo
