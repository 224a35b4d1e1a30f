// 文件上的在场: a place in a small file beside the account file, held by a lock that ends with the process.
#pragma once

#include "engine/presence.h"

namespace jxc::sqlite {

class FilePresence final : public Presence {
 public:
  /// Of an account file; beside it stands a file of its name with ".stations" behind, as long as somebody is at work.
  explicit FilePresence(const QString& accountFile) : name_(accountFile + QStringLiteral(".stations")) {}
  ~FilePresence() override;
  FilePresence(const FilePresence&) = delete;
  FilePresence& operator=(const FilePresence&) = delete;
  bool enter(const Station& station) override;
  void leave() override;
  std::vector<Station> others() override;
  bool takeAlone(int work) override;
  void giveBack() override;
  std::optional<Alone> aloneBy() override;

 private:
  enum class Make : bool { No, Yes };
  bool open(Make make);
  void tidyAway();
  int freePlace();

  QString name_;
  int descriptor_ = -1;
  int place_ = 0;  // 0: not at work
  Station station_;
  bool alone_ = false;
};

}  // namespace jxc::sqlite
