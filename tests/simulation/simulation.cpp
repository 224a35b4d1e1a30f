#include "simulation/simulation.h"

#include "core/clock.h"
#include "core/data_module.h"
#include "core/session.h"
#include "core/statements.h"
#include "engine/server.h"
#include "engine/sqlite/sqlite_database.h"
#include "harness/counter.h"
#include "harness/scripted_prompt.h"
#include "maintenance/prove.h"
#include "server/server_proxy.h"
#include "server/test_engine.h"
#include "simulation/station_door.h"
#include "stock/document_family.h"

#include <QDateTime>
#include <QTemporaryDir>

#include <algorithm>
#include <map>
#include <optional>
#include <semaphore>
#include <thread>
#include <utility>

namespace jxc::test {
namespace simulation_detail {

const QDateTime firstMoment(QDate(2021, 5, 3), QTime(9, 0));
/// So many commands are begun between two looks at the books.
constexpr int commandsToLook = 40;
/// What a customer keeps of a loan is a return and a sale at one stroke.
constexpr int documentsOfACommand = 2;

/// Documents by number, and whether each is audited.
using Told = std::map<QString, int>;

Told documentsThere() {
  Told all;
  for (const DocumentFamily& family : documentFamilies())
    for (const Row row :
         openSelect(compose("select {} as num,{} as st from {}", {family.number, family.status, family.head})))
      all[row.text("num")] = static_cast<int>(row.integer("st"));
  return all;
}

}  // namespace simulation_detail

using simulation_detail::Told;

struct Simulation::Stations {
  class Station final : public DoorKeeper, private Prompt {
   public:
    Station(Stations& all, unsigned seed, int index)
        : all_(all),
          name_(QStringLiteral("op%1").arg(index)),
          counter_(seed, {*this, *this, [this](char what, const QString& number) { tell(what, number); }}) {
      if (onServer()) proxy_.emplace(portOf(copyAddress()));
      start();
      thread_ = std::thread([this] { work(); });
    }
    ~Station() override {
      ends_ = true;
      go_.release();
      thread_.join();
    }
    Station(const Station&) = delete;
    Station& operator=(const Station&) = delete;

    /// The program is started, and its operator logs in.
    void start() {
      door_ = nullptr;
      books_.reset();
      auto door = std::make_unique<StationDoor>(open(), *this);
      door_ = door.get();
      books_ = std::move(door);
      session_ = all_.session;
      session_.a_name = name_;
    }

    bool isIdle() const { return call_.empty(); }
    bool isWaitingFor(const Station* writer) const { return wantsPlace_ && writer && writer != this; }
    const std::string& call() const { return call_; }
    const QString& name() const { return name_; }

    void jump(std::int64_t seconds) { ahead_ += seconds; }
    /// Lets it go on to its next call, or to the end of its command.
    void goOn(Fate fate) {
      fate_ = fate;
      clock::setFixed(all_.now.addSecs(ahead_));
      std::swap(jxc::session(), session_);
      books_ = dataModule().installAccountDb(std::move(books_));
      go_.release();
      all_.back_.acquire();
      books_ = dataModule().installAccountDb(std::move(books_));
      std::swap(jxc::session(), session_);
      if (std::exchange(killed_, false)) start();
    }

   private:
    std::unique_ptr<Database> open() const {
      if (onServer())
        return openPostgres(QString::fromStdString(proxy_->address(copyAddress()) + " application_name=" + mark()));
      auto books = openSqlite(all_.file());
      sqlite::doNotWaitForDisk(*books);  // what a power cut leaves is not asked here
      return books;
    }
    std::string mark() const { return "simulated_" + name_.toStdString(); }

    void work() {
      for (;;) {
        go_.acquire();
        if (ends_) return;
        call_ = "command";
        all_.note(*this, call_, {});
        committed_ = quiet_ = false;
        std::string end = "done";
        try {
          counter_.step();
        } catch (const Killed&) {
          end = "killed";
          killed_ = true;
        } catch (const ConnectionLost& failure) {
          end = failure.isUnknown() ? "unknown" : "lost";
          committed_ |= failure.isUnknown();
        } catch (const DbError& failure) {
          end = failure.kind() == DbError::Kind::Full ? "full" : failure.kind() == DbError::Kind::Busy ? "busy" : "";
          if (end.empty()) all_.wrong(*this, failure.message() + u' ' + QString::fromStdString(failure.statement()));
        } catch (const std::exception& failure) {
          all_.wrong(*this, QString::fromUtf8(failure.what()));
        }
        // What it kept and did not come to tell of.
        if (committed_ && end != "done") ++all_.untold;
        all_.note(*this, end, {});
        ++all_.counts[end];
        call_.clear();
        wantsPlace_ = false;
        all_.back_.release();
      }
    }

    Fate knock(std::string_view call, const std::string& what, bool writes) override {
      if (quiet_ && !writes && call != "begin") return Fate::Done;
      quiet_ = false;
      call_ = call;
      wantsPlace_ = writes;
      all_.note(*this, call_, what);
      all_.back_.release();
      go_.acquire();
      if (fate_ != Fate::Done) {
        all_.note(*this, "fate", std::to_string(static_cast<int>(fate_)));
        ++all_.counts["fate"];
      }
      return fate_;
    }
    void writing(bool on) override { all_.writer = on ? this : nullptr; }
    void kept() override { quiet_ = committed_ = true; }
    void cut(Fate how) override {
      if (how == Fate::Cut) return cutConnections(mark());
      proxy_->cut(how == Fate::CommitLost ? ServerProxy::Cut::BeforeCommit : ServerProxy::Cut::BeforeItsAnswer);
    }

    void tell(char what, const QString& number) {
      if (what == 'G')
        all_.told.erase(number);
      else
        all_.told[number] = what == 'A' ? 1 : 0;
      all_.note(*this, std::string(1, what), number.toStdString());
      ++all_.counts[std::string(1, what)];
    }
    void notice(const QString& text) override { all_.note(*this, "notice", text.toStdString()); }
    bool ask(const QString& text) override {
      if (door_->inTransaction()) all_.wrong(*this, u"asked inside a transaction: "_qs + text);
      door_->question();
      return true;
    }
    Answer askOrCancel(const QString& text) override { return ask(text) ? Answer::Yes : Answer::No; }

    Stations& all_;
    QString name_;
    std::optional<ServerProxy> proxy_;
    std::unique_ptr<Database> books_;  // while it has its turn, the data module's
    StationDoor* door_ = nullptr;
    Session session_;
    std::int64_t ahead_ = 0;  // seconds, of its clock before that of the others
    Counter counter_;
    std::string call_;  // at which it stands; empty between two commands
    Fate fate_ = Fate::Done;
    // Committed: its command has kept something. Quiet: nobody is let between that and its telling.
    bool wantsPlace_ = false, quiet_ = false, committed_ = false, killed_ = false, ends_ = false;
    std::binary_semaphore go_{0};
    std::thread thread_;
  };

  Stations(unsigned seed, int count, const Faults& which) : faults(which), random(seed) {
    clock::setFixed(now);
    dataModule().installAccountDb(openFresh(Story::Long));
    loadSession();  // not that of the story before
    WhileAsked yes({});
    openShop(yes);
    loadSession();
    session = jxc::session();
    told = simulation_detail::documentsThere();
    if (!onServer()) {
      accountDb().backupTo(file());
      dataModule().installAccountDb(openSqlite(file()));
    }
    for (int i = 0; i < count; ++i)
      stations.push_back(std::make_unique<Station>(*this, seed * 31 + static_cast<unsigned>(i), i + 1));
  }

  QString file() const { return folder.filePath(u"jxc.mdb"_qs); }
  unsigned upTo(unsigned most) { return static_cast<unsigned>(random() % most); }

  Fate fateOf(const Station& station) {
    const int dice = static_cast<int>(upTo(1000));
    if (dice < faults.kill) return Fate::Killed;
    const std::string& call = station.call();
    if (call == "question" || call == "command") return Fate::Done;
    // At a commit it is hardest to know what was kept, and there are few of them.
    if (onServer() && call == "commit" && dice < faults.kill + 20 * faults.cut)
      return dice % 2 == 0 ? Fate::CommitLost : Fate::AnswerLost;
    if (dice < faults.kill + faults.cut) {
      if (onServer()) return Fate::Cut;
      return call == "begin" ? Fate::Busy : Fate::Done;
    }
    if (dice < faults.kill + faults.cut + faults.full && (call == "execute" || call == "commit" || call == "post"))
      return Fate::Full;
    return Fate::Done;
  }

  QString run(int commands) {
    int begun = 0;
    bool gathering = false;
    for (;;) {
      std::vector<Station*> ready;
      for (const auto& station : stations)
        if (station->isIdle() ? begun < commands && !gathering : !station->isWaitingFor(writer))
          ready.push_back(station.get());
      if (ready.empty()) {
        if (!isQuiet()) return u"all stations wait for each other"_qs;
        lookAtBooks();
        if (!fault.isEmpty() || begun >= commands) return fault;
        gathering = false;
        continue;
      }
      Station& next = *ready[upTo(static_cast<unsigned>(ready.size()))];
      if (next.isIdle()) {
        gathering = ++begun % simulation_detail::commandsToLook == 0;
        now = now.addSecs(1 + upTo(90));
        if (static_cast<int>(upTo(1000)) < faults.clock) {
          static constexpr std::int64_t jumps[] = {-86400, -3600, 600, 7200, 86400, 40 * 86400};
          next.jump(jumps[upTo(std::size(jumps))]);
          ++counts["clock"];
        }
        next.goOn(Fate::Done);
      } else {
        next.goOn(fateOf(next));
      }
      if (!fault.isEmpty()) return fault;
    }
  }

  bool isQuiet() const {
    return std::ranges::all_of(stations, [](const auto& station) { return station->isIdle(); });
  }

  /// While no station is at work.
  void lookAtBooks() {
    const proof::Proof proof = proof::prove(accountDb());
    if (!proof.isClean()) {
      const proof::Finding& first = proof.findings.front();
      fault = proof.summary() + u' ' + first.check + u' ' + first.place + u' ' + first.stored + u" ≠ "_qs + first.due;
      return;
    }
    Told there = simulation_detail::documentsThere();
    QStringList otherwise;
    for (const auto& [number, status] : told)
      if (const auto found = there.find(number); found == there.end() || found->second != status) otherwise << number;
    for (const auto& [number, status] : there)
      if (!told.contains(number)) otherwise << number;
    if (otherwise.size() > simulation_detail::documentsOfACommand * untold)
      fault = QStringLiteral("%1 commands ended untold, but otherwise than told are %2")
                  .arg(untold)
                  .arg(otherwise.join(u' '));
    told = std::move(there);
    untold = 0;
    ++counts["looked"];
  }

  void note(const Station& station, std::string_view what, std::string_view more) {
    trace.push_back(station.name().toStdString() + ' ' + std::string(what) + ' ' + std::string(more));
  }
  void wrong(const Station& station, const QString& what) {
    if (fault.isEmpty()) fault = station.name() + u": "_qs + what;
  }

  Faults faults;
  std::mt19937 random;
  QTemporaryDir folder;
  QDateTime now = simulation_detail::firstMoment;
  jxc::Session session;
  Told told;
  int untold = 0;
  Station* writer = nullptr;
  QString fault;
  std::vector<std::string> trace;
  std::map<std::string, int> counts;
  std::binary_semaphore back_{0};
  std::vector<std::unique_ptr<Station>> stations;
};

Simulation::Simulation(unsigned seed, int stations, const Faults& faults)
    : all_(std::make_unique<Stations>(seed, stations, faults)) {}

Simulation::~Simulation() = default;

QString Simulation::run(int commands) {
  return all_->run(commands);
}

const std::vector<std::string>& Simulation::trace() const {
  return all_->trace;
}

int Simulation::count(const std::string& what) const {
  const auto found = all_->counts.find(what);
  return found == all_->counts.end() ? 0 : found->second;
}

}  // namespace jxc::test
