// 设计文档: the template under the designer's hands: what is chosen, edits with undo and redo, copies, its file. No
// widget.
#pragma once

#include "platform/report/template.h"

#include <QByteArray>
#include <QString>

#include <compare>
#include <functional>
#include <optional>
#include <vector>

namespace jxc::ui {

/// Where an object stands in a template.
struct ItemRef {
  int band = -1;
  int item = -1;
  auto operator<=>(const ItemRef&) const = default;
};

enum class Edge : std::uint8_t { Left, Center, Right, Top, Middle, Bottom };
enum class Order : std::uint8_t { Front, Back };

/// Holds one template while it is designed. Every edit is one step of undo; a drag of the mouse is one step too. What
/// is chosen belongs to the step, so that undo shows what it took back. Lengths are millimetres, kept to a hundredth.
class DesignDocument {
 public:
  /// Starts over with this template; nothing to undo, nothing to save.
  void start(report::Template t, QString path);

  const report::Template& current() const { return state_.design; }
  const QString& path() const { return path_; }
  bool isDirty() const { return !(state_.design == saved_); }
  /// Saves under the path of `start`, or a new one; the old file stays as "<file>.bak". Throws report::TemplateError.
  /// `force`: the operator agreed to replace a file that this program cannot read.
  void save(const QString& path, bool force);

  // What is chosen: objects; without them a band; without that the page.
  const std::vector<ItemRef>& chosen() const { return state_.chosen; }
  int chosenBand() const { return state_.band; }
  /// Where something new goes: the chosen band, or else the first on paper; -1 without bands.
  int bandForNew() const;
  bool isChosen(ItemRef ref) const;
  void choose(std::vector<ItemRef> items);  // the last one leads: others align with it
  void toggle(ItemRef item);
  void chooseBand(int band);
  void choosePage() { chooseBand(-1); }
  void chooseAll();
  /// The next or previous object in reading order.
  void chooseNext(int step);
  const report::Item& item(ItemRef ref) const;
  /// The bands' numbers in the order in which they print.
  std::vector<int> bandsInOrder() const;

  /// One step of undo. Steps with the same non-empty `joinKey`, one after another, become one (arrow keys).
  using Edit = std::function<void(report::Template&)>;
  void edit(const QString& what, const Edit& change, const QString& joinKey = {});
  /// A drag: each `gesture` starts from where `beginGesture` was, `endGesture` makes it one step.
  void beginGesture();
  void gesture(const Edit& change);
  /// At the end of a drag: what left its band belongs to the band whose ground its middle stands on. `bandTops`: where
  /// the canvas shows each band, in its millimetres.
  void settle(const std::vector<double>& bandTops);
  void endGesture(const QString& what);
  void cancelGesture();

  bool canUndo() const { return !undo_.empty(); }
  bool canRedo() const { return !redo_.empty(); }
  QString undoText() const { return canUndo() ? undo_.back().what : QString(); }
  QString redoText() const { return canRedo() ? redo_.back().what : QString(); }
  void undo();
  void redo();

  // Commands on what is chosen. All are one step, and do nothing when nothing fits.
  /// Puts an object into a band, inside its borders, and chooses it.
  void add(int band, report::Item item);
  void removeChosen();
  void moveBy(double dx, double dy, const QString& joinKey = {});
  void growBy(double dx, double dy, const QString& joinKey = {});
  void align(Edge edge);
  void sameWidth();
  void sameHeight();
  void spread(Qt::Orientation direction);  // equal gaps between the first and the last
  void reorder(Order order);

  /// The column of the list in which the leading object stands; -1: none.
  int chosenColumn() const;
  /// Whether the rows are a list of columns.
  bool isList() const;
  /// A column for this field behind the chosen one, else as the last one; its cell in the row is chosen then. False:
  /// there is no list or no room.
  bool insertColumn(const report::DetailField& field);
  /// The chosen column. False: none is chosen, or it is the only one.
  bool removeColumn();

  void addBand(report::BandKind kind);  // a group brings header and footer
  void removeBand(int band);
  void moveBand(int band, int step);  // among those of its kind

  // Copies as text, so that they reach another window.
  QByteArray copyChosen() const;
  /// Into the chosen band, a little beside the original when it is the same. False: no objects in there.
  bool paste(const QByteArray& data);
  void duplicate();

  /// After every change of template, choice or file.
  void onChanged(std::function<void()> hook) { changed_.push_back(std::move(hook)); }

 private:
  struct State {
    report::Template design;
    std::vector<ItemRef> chosen;
    int band = -1;
  };
  struct Step {
    QString what;
    State state;
  };
  void push(const QString& what, State before);
  void editChosen(const QString& what, const std::function<void(report::Item&)>& change, const QString& joinKey = {});
  void changed();
  void dropDangling();

  State state_;
  report::Template saved_;
  QString path_;
  std::vector<Step> undo_, redo_;
  QString joinKey_;
  std::optional<State> base_;  // of a drag
  std::vector<std::function<void()>> changed_;
};

/// Kept to a hundredth of a millimetre: what the file holds.
double toHundredth(double millimetres);
/// Where an object of this band may reach to, from the left.
double bandWidth(const report::Template& t, const report::Band& band);

}  // namespace jxc::ui
