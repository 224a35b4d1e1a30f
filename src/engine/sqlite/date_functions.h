// 日期函数: dates as the text yyyy-MM-dd, with or without HH:mm:ss behind a blank.
#pragma once

#include <sqlite3.h>

namespace jxc::sqlite {

void registerDateFunctions(sqlite3* connection);

}  // namespace jxc::sqlite
