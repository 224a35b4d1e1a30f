// 测试引擎: the engine that a test runs on: SQLite in memory, or a server of the test's own.
#pragma once

#include "engine/database.h"

#include <memory>
#include <string>

namespace jxc::test {

/// With JXC_TEST_ENGINE=postgres the tests run on the server of JXC_TEST_ADDRESS (an address of libpq, or `@` and a
/// file that holds one; tools/postgres.sh starts a server). Each process takes a database of its own there; what a test
/// does is taken back when its connection ends.
bool onServer();

/// What a server takes back at the end of a test grows with what was done: a long story gets a database that it keeps,
/// and that other connections see.
enum class Story { Short, Long };

/// Without tables.
std::unique_ptr<Database> openEmpty(Story story = Story::Short);

/// A fresh account set: all tables, upgraded. Made once a process, or once a server.
std::unique_ptr<Database> openFresh(Story story = Story::Short);
/// A second station at the account set that openFresh(Story::Long) opened last.
std::unique_ptr<Database> openAgain();
/// Cuts all connections to it.
void cutConnections();
/// Cuts those that call themselves so (application_name).
void cutConnections(const std::string& application);
/// Cuts the connection that commits a new row of `table`, at the last moment before the row is kept.
void cutAtCommit(const std::string& table);
/// The process of the server that holds the right to write at it; 0 without.
int writersProcess();
/// Its address for libpq.
std::string copyAddress();
/// The port that an address of libpq names.
int portOf(const std::string& address);
/// The same on SQLite whatever the tests run on, for comparing.
std::unique_ptr<Database> openFreshFile();

}  // namespace jxc::test
