#include "DemoService/Http/Router.h"

#include "DemoService/Files/Record.h"

#include <algorithm>
#include <array>
#include <span>
#include <string_view>
#include <vector>

namespace tunedeck::demo {

using namespace std::chrono_literals;
using namespace std::string_view_literals;

namespace {

/// How long a library action takes at a human pace.
constexpr Span libraryWork = 900ms;
constexpr Span linkWork = 300ms;

struct Failure {
    std::string error;
    std::optional<std::string> code;
    std::optional<bool> ok;

    static void members(auto& self, auto& archive) {
        archive("ok", self.ok);
        archive("code", self.code);
        archive("error", self.error);
    }
};

Reply failure(int status, std::string error, std::optional<std::string> code = {}) {
    return {.status = status,
            .body = recordText(Failure{std::move(error), std::move(code), {}}, Audience::client),
            .allow = {},
            .delay = {}};
}

/// A failed library action: readers of its reply look for "ok" whatever the status is.
Reply libraryFailure(int status, std::string error) {
    return {.status = status,
            .body = recordText(Failure{std::move(error), {}, false}, Audience::client),
            .allow = {},
            .delay = {}};
}

Reply notAllowed(std::string methods) {
    Reply reply = failure(405, "This method isn't allowed here.");
    reply.allow = std::move(methods);
    return reply;
}

Reply notFound() {
    return failure(404, "There is nothing at this address.");
}

Reply document(std::string text) {
    return {.status = 200, .body = std::move(text), .allow = {}, .delay = {}};
}

int hexDigit(char c) {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    const char lower = static_cast<char>(c | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

std::string percentDecoded(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '%' && i + 2 < text.size() && hexDigit(text[i + 1]) >= 0 && hexDigit(text[i + 2]) >= 0) {
            result += static_cast<char>(hexDigit(text[i + 1]) * 16 + hexDigit(text[i + 2]));
            i += 2;
        } else {
            result += text[i];
        }
    }
    return result;
}

/// The parts of the path between its slashes, each decoded by itself: an encoded slash in an id stays in the id.
std::vector<std::string> segments(std::string_view target) {
    std::string_view path = target.substr(0, target.find('?'));
    std::vector<std::string> result;
    while (path.starts_with('/')) {
        path.remove_prefix(1);
        const auto end = std::min(path.find('/'), path.size());
        result.push_back(percentDecoded(path.substr(0, end)));
        path.remove_prefix(end);
    }
    return result;
}

/// The body as an object; an empty body counts as an empty one.
std::optional<rapidjson::Document> bodyObject(const std::string& body) {
    return parseObject(body.empty() ? "{}" : body);
}

std::optional<std::string> textMember(const rapidjson::Document& object, const char* name) {
    const auto member = object.FindMember(name);
    if (member == object.MemberEnd() || !member->value.IsString()) {
        return std::nullopt;
    }
    return std::string(member->value.GetString(), member->value.GetStringLength());
}

constexpr auto notJson = "The request's body isn't a JSON object.";

Reply libraryAction(World& world, const std::string& action, const std::string& body, Moment now) {
    const auto object = bodyObject(body);
    if (!object) {
        return libraryFailure(400, notJson);
    }
    LibraryReply result;
    if (action == "restore") {
        const auto version = textMember(*object, "version");
        if (!version) {
            return libraryFailure(400, "The request names no version to restore.");
        }
        result = world.restore(now, *version);
    } else if (action == "apply") {
        result = world.apply(now);
    } else if (action == "baseline") {
        result = world.takeBaseline(now);
    } else if (action == "retry") {
        result = world.retryFailed(now);
    } else {
        result = world.dismissFailed(now);
    }
    return {.status = result.status,
            .body = recordText(result, Audience::client),
            .allow = {},
            .delay = result.ok ? libraryWork : Span{}};
}

Reply linkReply(const LinkResult& result, int success) {
    if (const auto* problem = std::get_if<LinkProblem>(&result)) {
        return failure(problem->status, problem->error, problem->code);
    }
    return {.status = success,
            .body = recordText(std::get<Link>(result), Audience::client),
            .allow = {},
            .delay = linkWork};
}

Reply createLink(World& world, const std::string& body, Moment now) {
    const auto object = bodyObject(body);
    if (!object) {
        return failure(400, notJson);
    }
    const auto kind = textMember(*object, "kind");
    if (!kind) {
        return failure(400, "The request names no kind of assistant.");
    }
    return linkReply(world.createLink(now, *kind, textMember(*object, "label")), 201);
}

Reply toLinks(World& world, std::span<const std::string> path, const Request& request, Moment now) {
    if (path.empty()) {
        if (request.method == "GET") {
            return document(recordText(world.state().links, Audience::client));
        }
        return request.method == "POST" ? createLink(world, request.body, now) : notAllowed("GET, POST");
    }
    if (path.size() == 1) {
        if (request.method != "DELETE") {
            return notAllowed("DELETE");
        }
        if (const auto problem = world.deleteLink(now, path[0])) {
            return failure(problem->status, problem->error, problem->code);
        }
        return {.status = 204, .body = {}, .allow = {}, .delay = linkWork};
    }
    if (path.size() == 2 && path[1] == "rotate") {
        return request.method == "POST" ? linkReply(world.rotateLink(now, path[0]), 200) : notAllowed("POST");
    }
    return notFound();
}

Reply toToolbox(World& world, std::span<const std::string> path, const Request& request, Moment now) {
    if (path.empty()) {
        return request.method == "GET" ? document(recordText(world.tools(now), Audience::client)) : notAllowed("GET");
    }
    if (path.size() != 1 || path[0] != "install") {
        return notFound();
    }
    if (request.method != "POST") {
        return notAllowed("POST");
    }
    world.installTools(now);
    return {.status = 202, .body = recordText(world.tools(now), Audience::client), .allow = {}, .delay = {}};
}

Reply toLibrary(World& world, std::span<const std::string> path, const Request& request, Moment now) {
    static constexpr std::array actions{"restore"sv, "apply"sv, "baseline"sv, "retry"sv, "dismiss"sv};
    if (path.size() != 1 || std::ranges::find(actions, path[0]) == actions.end()) {
        return notFound();
    }
    return request.method == "POST" ? libraryAction(world, path[0], request.body, now) : notAllowed("POST");
}

} // namespace

Reply answer(World& world, const ServiceFacts& facts, const Request& request, Moment now) {
    const auto path = segments(request.target);
    if (path.size() < 2 || path[0] != "local") {
        return notFound();
    }
    const auto rest = std::span(path).subspan(2);
    Reply reply = notFound();
    if (path[1] == "status" && rest.empty()) {
        reply = request.method == "GET" ? document(statusText(world, facts)) : notAllowed("GET");
    } else if (path[1] == "toolbox") {
        reply = toToolbox(world, rest, request, now);
    } else if (path[1] == "rekordbox") {
        reply = toLibrary(world, rest, request, now);
    } else if (path[1] == "links") {
        reply = toLinks(world, rest, request, now);
    }
    reply.delay = Span(static_cast<Span::rep>(static_cast<double>(reply.delay.count()) / world.speed()));
    return reply;
}

} // namespace tunedeck::demo
