// 列表装载: runs the query of a list without freezing the window; the answer of an old query is dropped.
#pragma once

#include "core/background_reading.h"
#include "core/enquiry.h"

#include <QObject>

#include <exception>
#include <functional>
#include <memory>

namespace jxc::ui {

/// Runs queries and computations behind the window (core/background_reading.h). The first rows come ahead of the rest
/// where the statement allows it or the computation tells them. Where nobody can answer behind the window, in memory
/// and inside a transaction, the same answer comes at once.
class ListLoader : public QObject {
 public:
  explicit ListLoader(QObject* parent);
  ~ListLoader() override;

  /// `arrived(rows, complete)` comes in the window's thread: once with the first rows, perhaps, and once with all.
  /// `failed` gets what the query threw. A newer load drops what an older one still has to say.
  void load(Question question, std::function<void(RowSet, bool complete)> arrived,
            std::function<void(std::exception_ptr)> failed);
  /// Stops what is running; nothing more arrives.
  void cancel();
  bool isRunning() const { return job_ != nullptr; }
  /// How far a computation says it is, in percent; -1 when nobody knows.
  int percent() const;
  /// Blocks for at most so long, and takes the answer when it is there by then.
  bool waitFor(int milliseconds);

 private:
  struct Job;
  void take();
  std::shared_ptr<Job> job_;
  std::shared_ptr<BackgroundReading::Question> question_;
};

}  // namespace jxc::ui
