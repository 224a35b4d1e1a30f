// OLE2 容器: the container of .xls files. No Qt here: the library below uses words that Qt takes for its own.
#pragma once

#include <string>
#include <vector>

namespace jxc {

/// A container with one stream; empty when it does not fit.
std::string oleFile(const char* streamName, const std::string& content);
/// Names of the streams at the top of a container; empty when the file is none, or damaged.
std::vector<std::string> oleStreamNames(const char* path);
/// The bytes of a stream at the top of a container; empty when it is not there, or damaged.
std::string oleStream(const char* path, const char* streamName);

}  // namespace jxc
