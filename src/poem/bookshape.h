#pragma once

namespace verlis {

// A Poem book holds ten pages of fourteen lines, and every line position
// of a poem takes its line from any of the ten pages.
inline constexpr int PageCount = 10;
inline constexpr int LineCount = 14;

} // namespace verlis
