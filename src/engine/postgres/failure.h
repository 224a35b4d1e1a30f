// 失败: what the server reports, as a DbError in words for the operator.
#pragma once

#include "engine/failures.h"
#include "engine/postgres/native.h"
#include "engine/server.h"

#include <string_view>

namespace jxc::postgres {

/// "数据库服务器连接不上：…"; no name of a file, so the program goes on.
ConnectionLost cannotConnect(const char* nativeMessage);

/// The connection broke and what was asked for was not done.
ConnectionLost lostUnsaved(std::string_view statement);
/// The server said nothing for too long.
ConnectionLost lostSilent(std::string_view statement);
/// It broke at the very end and could not be made again to see.
ConnectionLost lostUnknown(std::string_view statement);

/// For a result that is a failure. `widthOf` says how many characters the named place takes.
DbError statementFailed(const PGresult* result, std::string_view statement, int (*widthOf)(void*, std::string_view),
                        void* context);

/// The state of a failure, five characters; empty when it has none.
std::string_view stateOf(const PGresult* result);
/// Failures after which a statement is to be made anew: the tables are no longer what they were.
bool isStale(std::string_view state);
/// Failures that end the connection.
bool endsConnection(std::string_view state);

}  // namespace jxc::postgres
