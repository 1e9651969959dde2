#ifndef LINKS_STREAM_NAMES_H
#define LINKS_STREAM_NAMES_H

#include <string_view>

namespace vorntools {

// Names of storages and streams of a document file as its directory stores them: UTF-16, big-endian.
namespace stream {

using namespace std::string_view_literals;

constexpr auto root = "\0C\0A\0T\0I\0A\0001"sv;
constexpr auto documentProperty = "\0\003\0C\0A\0T\0D\0o\0c\0u\0m\0e\0n\0t\0P\0r\0o\0p\0e\0r\0t\0y"sv;
constexpr auto propertySets = "\0\003\0C\0A\0T\0P\0r\0o\0p\0e\0r\0t\0y\0S\0e\0t\0s"sv;
constexpr auto storageProperty = "\0\003\0C\0A\0T\0S\0t\0o\0r\0a\0g\0e\0P\0r\0o\0p\0e\0r\0t\0y"sv;
constexpr auto containers = "\0D\0a\0t\0a"sv;
constexpr auto preview = "\0\005\0C\0A\0T\0P\0r\0e\0v\0i\0e\0w"sv;
/** Content of a container; the rest of the name tells which. */
constexpr auto containerBegin = "\0C\0o\0n\0t\0_"sv;

} // namespace stream
} // namespace vorntools

#endif
