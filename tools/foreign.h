// What others have and this program lacks: names of formats, and files that are known by their first bytes.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tool {

// What FFmpeg means by a name that no format has here; nothing if it is no name of FFmpeg's either.
std::optional<std::string> meaningOf(std::string_view name);

// What a file is that no reader takes, and how to make something of it that one does; nothing if the bytes say nothing.
std::optional<std::string> foreignFile(std::string_view begin);

}  // namespace tool
