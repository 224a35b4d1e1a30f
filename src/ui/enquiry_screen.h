// 查询屏幕: a screen made from the description of an enquiry; a class adds only what truly differs.
#pragma once

#include "platform/sheet/sheet.h"
#include "ui/enquiry_spec.h"
#include "ui/screen.h"

#include <QWidget>

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace jxc::ui {

class Chart;

/// Something beside a list that follows its current row: a table of powers, a picture.
class RowPane : public QWidget {
 public:
  /// Null without a row.
  virtual void show(const Row* row, const Criteria& criteria) = 0;
  /// What an export takes in place of the list; nothing: the list itself.
  virtual std::optional<Sheet> sheet() const { return {}; }
};

namespace enquiry_screen_detail {

/// The fields, lists and commands of a description, before the screen is built from them.
struct Parts {
  explicit Parts(const EnquirySpec& spec);
  std::vector<FieldSpec> fieldSpecs;
  std::vector<GridSpec> gridSpecs;
  std::vector<CommandSpec> commandSpecs;
  ScreenSpec screenSpec;

 private:
  /// The list with columns for an earlier period.
  GridSpec gridOf(const EnquiryView& view);
  std::deque<std::string> texts_;  // names and captions that are made here
  std::deque<std::vector<ColumnSpec>> columns_;
};

}  // namespace enquiry_screen_detail

/// Asks, loads behind the window, shows. F2 searches, Enter on a row goes to what stands behind it, Esc comes back to
/// that row, and leaves from the outermost list. While the screen is kept it keeps what was typed.
///
///     const ui::RegisteredEnquiry<> kRegistered{kEnquiry};             // nothing differs
///     const ui::RegisteredEnquiry<TF_Kccx> kRegistered{kEnquiry};      // a class binds what does
///     const ui::RegisteredEnquiry<TradeScreen> kRegistered{kEnquiry};  // … for several enquiries
class EnquiryScreen : private enquiry_screen_detail::Parts, public Screen {
 public:
  explicit EnquiryScreen(const EnquirySpec& spec);
  ~EnquiryScreen() override;

  const EnquirySpec& enquiry() const { return enquiry_; }
  /// What the tab in sight asks for now, with what followed rows stand for.
  Criteria criteria() const;
  /// The same, narrowed to what the current row stands for where it leads to other rows; its words, empty without.
  std::pair<Criteria, QString> criteriaOfRow() const;
  /// The list in sight.
  Grid& shown() const;
  /// Reads the list in sight anew.
  void search();
  /// Goes to a list of the tab in sight by its switch, or to a list of another tab.
  void showView(std::string_view grid);
  /// Follows the current row to what stands behind it.
  void follow();
  /// All inputs as they were when the screen was first opened.
  void resetInputs();
  /// Something changed in the books: rows are read anew, those of other lists when they come into sight.
  void rowsChanged();

  void reject() override;
  void done(int result) override;

 protected:
  void activate() override;
  /// What an enquiry asks for beside its inputs, a dialog's choices for instance.
  virtual void complete(Criteria&) const {}
  /// What every enquiry has without being described.
  bool onlyLooks(const CommandSpec& command) const override;
  void closeEvent(QCloseEvent* event) override;

 private:
  struct Below;
  struct View;
  struct Tab;
  struct Step;
  void buildTab(Panel area, const EnquiryTab& tab);
  void placeInputs(Panel& area, Tab& tab);
  void buildView(Panel area, Tab& tab, View& view);
  void buildBelow(Panel area, View& view);
  void buildSide(Panel area);
  void bindCommands(std::span<const EnquiryCommand> commands);
  void bindSearch(Tab& tab);
  void fillInputs(Tab& tab, bool first);
  void firstPeriod(Tab& tab, bool first);
  static void showComparison(View& view, CompareWith with);
  Field* fieldOf(const Tab& tab, Asks asks) const;
  Criteria criteriaOf(const Tab& tab) const;
  Tab& tabInSight() const;
  View& viewInSight() const;
  void show(Tab& tab, View& view);
  void load(View& view);
  void follow(View& view);
  bool goBack();
  void showBelow(View& view);
  void openDocument(const QString& number);
  void showChart(View& view, bool on);
  void focusValues(View& view);
  void readRights();
  void showCommands();
  void placeCommands();
  int roomOfCommands();
  void run(const EnquiryCommand& command);
  void previewRule(const EnquiryCommand& command);
  void print();
  void exportList();
  QString whatToChange(const Tab& tab, const View& view) const;

  const EnquirySpec& enquiry_;
  std::vector<std::unique_ptr<Tab>> tabs_;
  Grid* side_ = nullptr;
  QTabWidget* pages_ = nullptr;
  QString sideKey_;                // of its row that the tabs follow
  std::vector<QPushButton*> row_;  // the commands below the lists, but for the way out
  QWidget* lines_ = nullptr;       // in which they stand, at the end of the last one the way out
  std::map<const EnquiryCommand*, bool> allowed_;
  bool opened_ = false;  // at least once
  bool filling_ = false;
};

/// What enquiries use of the layers above; who has it announces it at namespace scope.
struct EnquiryServices {
  void (*openDocument)(const QString& number, Screen& screen) = nullptr;
  void (*preview)(const QString& doing, const QString& number, const std::function<bool(Prompt&)>& rule) = nullptr;
  /// The list on its own template; what stands in a withheld column is null there.
  void (*printList)(const EnquiryView& view, const Grid& list, const Criteria& criteria,
                    EnquiryScreen& screen) = nullptr;
};
EnquiryServices& enquiryServices();

/// All descriptions, for tests that hold for every enquiry.
const std::vector<const EnquirySpec*>& registeredEnquiries();
void registerEnquiry(const EnquirySpec& spec, ScreenFactory factory);

/// At namespace scope of the enquiry's .cpp. A class of several enquiries takes the description as its only argument.
template <class T = EnquiryScreen>
struct RegisteredEnquiry {
  explicit RegisteredEnquiry(const EnquirySpec& spec) {
    registerEnquiry(spec, [&spec] {
      if constexpr (std::is_constructible_v<T, const EnquirySpec&>)
        return static_cast<Screen*>(new T(spec));
      else
        return static_cast<Screen*>(new T);
    });
  }
};

}  // namespace jxc::ui
