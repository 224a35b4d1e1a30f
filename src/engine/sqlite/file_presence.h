// 文件上的在场: a place in a small file beside the account file, held by a lock that ends with the process.
#pragma once

#include "engine/presence.h"

namespace jxc::sqlite {

class FilePresence final : public Presence {
 public:
  /// Of an account file; beside it a file of its name with ".stations" behind, which stays.
  explicit FilePresence(const QString& accountFile);
  ~FilePresence() override;
  FilePresence(const FilePresence&) = delete;
  FilePresence& operator=(const FilePresence&) = delete;
  /// False where it cannot be written.
  bool isOpen() const { return descriptor_ >= 0; }

  bool enter(const Station& station) override;
  void leave() override;
  std::vector<Station> others() override;
  bool takeAlone(int work) override;
  void giveBack() override;
  std::optional<Alone> aloneBy() override;

 private:
  int freePlace();

  int descriptor_;
  int place_ = 0;  // 0: not at work
  Station station_;
  bool alone_ = false;
};

}  // namespace jxc::sqlite
