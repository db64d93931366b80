// Which position the held direction keys ask for.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace klova {

/// Whether `code` is an arrow key or one of W, A, S and D.
bool isDirectionKey(std::int64_t code);

/// The position for the direction keys held, repeats included; absent where they name none.
std::optional<std::string_view> positionForKeys(std::span<const std::int64_t> keys);

} // namespace klova
