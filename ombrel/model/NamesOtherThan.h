#pragma once
#include <concepts>
#include <type_traits>

namespace ombrel {

/// Enumerations but one. Setters whose numbers an enumeration names take any int, since documents may hold any;
/// overloads for these types, which are deleted, keep the names of other settings out.
template <typename Names, typename Own>
concept NamesOtherThan = std::is_enum_v<Names> && !std::same_as<Names, Own>;

} // namespace ombrel
