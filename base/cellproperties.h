#pragma once

namespace base {

/// Properties with which a widget in a table knows the cell that it stands in.
constexpr char rowProperty[] = "row";
constexpr char columnProperty[] = "column";

} // namespace base
