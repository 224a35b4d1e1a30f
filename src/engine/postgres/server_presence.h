// 服务器上的在场: locks of a connection of its own.
#pragma once

#include "engine/postgres/native.h"
#include "engine/presence.h"

#include <string>

namespace jxc::postgres {

/// A connection that breaks is made again, and what it held with it, at the next call; until then the station is not
/// seen by others. Calls throw ConnectionLost when that fails.
class ServerPresence final : public Presence {
 public:
  ServerPresence(std::string address, std::string user) : address_(std::move(address)), user_(std::move(user)) {}
  ~ServerPresence() override;
  ServerPresence(const ServerPresence&) = delete;
  ServerPresence& operator=(const ServerPresence&) = delete;

  bool enter(const Station& station) override;
  void leave() override;
  std::vector<Station> others() override;
  bool takeAlone(int work) override;
  void giveBack() override;
  std::optional<Alone> aloneBy() override;

 private:
  PGconn* connection();
  ResultHandle ask(const std::string& sql);
  bool isTrue(const std::string& sql);
  bool comeIn();

  std::string address_, user_;
  ConnectionHandle connection_;
  Station station_;
  bool isHere_ = false;
  int work_ = 0;
};

}  // namespace jxc::postgres
