#include "DemoService/Http/Router.h"

#include "DemoService/Files/JsonFile.h"
#include "TunedeckCore/Support/Json/Record.h"

#include <QByteArrayList>

#include <array>

namespace tunedeck::demo {

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

constexpr auto libraryDelay = 900ms;
constexpr auto linkDelay = 300ms;

/// A request for one of the routes below.
struct Call {
    World& world;
    const ServiceFacts& facts;
    const Request& request;
    Moment now;
    QString id; ///< the segment matched by "*"

    /// The body, which may be empty.
    std::expected<json::Object, json::Error> body() const {
        return json::parseObject(request.body.isEmpty() ? "{}"_ba : request.body);
    }
};

Response failure(int status, const QString& error, const QString& code = {}) {
    json::Object body{{u"error"_s, error}};
    if (!code.isEmpty()) {
        body.set(u"code"_s, code);
    }
    return {.status = status, .body = json::compactText(body)};
}

Response success(const json::Value& body, int status = 200, std::chrono::milliseconds delay = {}) {
    return {.status = status, .body = json::compactText(body), .delay = delay};
}

Response status(const Call& call) {
    return success(describeService(call.world.state(), call.facts));
}

Response tools(const Call& call) {
    return success(json::encode(call.world.state().toolbox.reportAt(call.now)));
}

Response installTools(const Call& call) {
    call.world.update(call.now, [](State& state, StepContext& context) { state.toolbox.install(context); });
    return success(json::encode(call.world.state().toolbox.reportAt(call.now)), 202);
}

/// Runs a library action. Clients look for "ok" in the body whatever the status is.
Response changeLibrary(const Call& call, auto action) {
    const auto body = call.body();
    const auto reply = call.world.update(call.now, [&](State& state, StepContext& context) -> Library::Reply {
        if (!body) {
            return Library::refused(context, 400, u"The request's body isn't a JSON object."_s);
        }
        if (!state.library) {
            return Library::refused(context, 404, u"No Rekordbox library was found on this computer."_s);
        }
        return action(*state.library, context, *body);
    });
    return success(json::encode(reply), reply.status, reply.ok ? libraryDelay : 0ms);
}

template<Library::Reply (Library::*action)(StepContext&)>
Response changeLibrary(const Call& call) {
    return changeLibrary(call, [](Library& library, StepContext& context, const json::Object& /*body*/) {
        return (library.*action)(context);
    });
}

Response restore(const Call& call) {
    return changeLibrary(call, [](Library& library, StepContext& context, const json::Object& body) {
        const auto version = body.text("version"_L1);
        return version ? library.restore(context, *version)
                       : Library::refused(context, 400, u"The request names no version to restore."_s);
    });
}

Response links(const Call& call) {
    const auto list = json::encode(call.world.state().links.all, json::Form::AsDeclared);
    return success(json::Object{{u"links"_s, list}});
}

/// Runs action(Links&, StepContext&), which needs the cloud relay, and sends its result.
template<class Action>
Response changeLinks(const Call& call, int status, Action action) {
    const auto result = call.world.update(
        call.now, [&](State& state, StepContext& context) -> std::invoke_result_t<Action, Links&, StepContext&> {
            if (!state.cloud.enabled) {
                return Links::refused(context, {409, u"cloud_disabled"_s, u"The cloud relay is switched off."_s});
            }
            if (!state.cloud.connected.value_or(true)) {
                return Links::refused(context, {503, u"cloud_unreachable"_s,
                                                u"The Tunedeck cloud can't be reached. Is this Mac online?"_s});
            }
            return action(state.links, context);
        });
    if (!result) {
        return failure(result.error().status, result.error().text, result.error().code);
    }
    if constexpr (std::is_void_v<typename decltype(result)::value_type>) {
        return {.status = status, .delay = linkDelay};
    } else {
        return success(json::encode(*result, json::Form::AsDeclared), status, linkDelay);
    }
}

Response createLink(const Call& call) {
    const auto body = call.body();
    if (!body) {
        return failure(400, u"The request's body isn't a JSON object."_s);
    }
    const auto kind = body->text("kind"_L1);
    if (!kind) {
        return failure(400, u"The request names no kind of assistant."_s);
    }
    return changeLinks(call, 201, [&](Links& links, StepContext& context) {
        return links.create(context, *kind, body->text("label"_L1));
    });
}

Response rotateLink(const Call& call) {
    return changeLinks(call, 200, [&](Links& links, StepContext& context) { return links.rotate(context, call.id); });
}

Response deleteLink(const Call& call) {
    return changeLinks(call, 204, [&](Links& links, StepContext& context) { return links.remove(context, call.id); });
}

struct Route {
    const char* method;
    const char* path; ///< "*" matches any segment
    Response (*handler)(const Call&);
};

constexpr std::array routes{
    Route{"GET", "/local/status", status},
    Route{"GET", "/local/toolbox", tools},
    Route{"POST", "/local/toolbox/install", installTools},
    Route{"POST", "/local/rekordbox/restore", restore},
    Route{"POST", "/local/rekordbox/apply", changeLibrary<&Library::apply>},
    Route{"POST", "/local/rekordbox/baseline", changeLibrary<&Library::takeBaseline>},
    Route{"POST", "/local/rekordbox/retry", changeLibrary<&Library::retry>},
    Route{"POST", "/local/rekordbox/dismiss", changeLibrary<&Library::dismiss>},
    Route{"GET", "/local/links", links},
    Route{"POST", "/local/links", createLink},
    Route{"DELETE", "/local/links/*", deleteLink},
    Route{"POST", "/local/links/*/rotate", rotateLink},
};

/// Whether `path` matches a route; stores the segment matched by "*" in `id`. Segments are decoded one by one, so that
/// an id may contain an encoded slash.
bool matches(const Route& route, const QByteArray& path, QString& id) {
    const auto wanted = QByteArray(route.path).split('/');
    const auto found = path.split('/');
    if (wanted.size() != found.size()) {
        return false;
    }
    for (qsizetype i = 0; i < found.size(); ++i) {
        const auto segment = QByteArray::fromPercentEncoding(found[i]);
        if (wanted[i] == "*") {
            id = QString::fromUtf8(segment);
        } else if (wanted[i] != segment) {
            return false;
        }
    }
    return true;
}

} // namespace

Response respond(World& world, const ServiceFacts& facts, const Request& request, Moment now) {
    const auto path = request.target.split('?').constFirst();
    QByteArrayList allowed;
    for (const Route& route : routes) {
        Call call{.world = world, .facts = facts, .request = request, .now = now};
        if (!matches(route, path, call.id)) {
            continue;
        }
        if (request.method == route.method) {
            Response response = route.handler(call);
            response.delay = std::chrono::round<std::chrono::milliseconds>(response.delay / world.speed());
            return response;
        }
        allowed.append(route.method);
    }
    if (allowed.isEmpty()) {
        return failure(404, u"There is nothing at this address."_s);
    }
    Response response = failure(405, u"This method isn't allowed here."_s);
    response.allow = allowed.join(", ");
    return response;
}

} // namespace tunedeck::demo
