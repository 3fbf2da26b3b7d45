#pragma once

#include <QLatin1StringView>

#include <string_view>
#include <tuple>

namespace tunedeck::json {

/// A member of a record and its name.
template<class Record, class Type>
struct Member {
    QLatin1StringView name;
    Type Record::* pointer;
};

/// The name in the declaration of a member. Compilers write it into the signature of this function, as in
/// "… [pointer = &Record::name]" or "… [with auto pointer = &Record::name; …]".
template<auto pointer>
consteval QLatin1StringView memberName() {
    constexpr std::string_view signature = __PRETTY_FUNCTION__;
    constexpr auto end = signature.find_first_of(";]", signature.find("pointer = "));
    constexpr auto start = signature.rfind(':', end) + 1;
    return {signature.data() + start, end - start};
}

/// Declares the members of a record that are stored in JSON:
///
///     static constexpr auto members = json::members<&Cloud::enabled, &Cloud::baseUrl>;
///
/// A member of type std::optional may be absent or null; any other is required. A second list `internalMembers`
/// declares members that encode() writes for Form::Complete only.
template<auto... pointers>
inline constexpr std::tuple members{Member{memberName<pointers>(), pointers}...};

} // namespace tunedeck::json
