// Failures that no screen caught: told once, in one place, and fatal when they name the account file.
#include "engine/error.h"
#include "engine/waiting.h"
#include "screens/harness/screen_test.h"
#include "ui/application.h"
#include "ui/refresh_after.h"
#include "ui/waiting_notice.h"

#include <QLabel>
#include <QTimer>

namespace jxc::test {

TEST_F(ScreenTest, FailuresEndInOneHandlerAndTheScreenStays) {
  int ended = 0;
  const auto before = std::exchange(ui::processEnd(), [&](int code) { ended = code; });
  open("F_Rjbz", [&](ui::Screen& s) {
    QObject::connect(&s.command("btnCancel"), &QPushButton::pressed, &s,
                     [] { throw DbError(DbError::Kind::UnknownName, QStringLiteral("No column G_XX in JXC_GOODS")); });
    expectNotice(QStringLiteral("no column g_xx in jxc_goods"));
    // As an event of the window: the mouse would send the same.
    QTimer::singleShot(0, &s.command("btnCancel"), [&] { Q_EMIT s.command("btnCancel").pressed(); });
    settle();
    EXPECT_TRUE(s.isVisible());
    EXPECT_EQ(ended, 0);
    expectNotice(QStringLiteral("数据库格式不可识别！\r\n\r\n系统将退出！"));
    QTimer::singleShot(0, &s, [] { throw DbError(DbError::Kind::File, QStringLiteral("Cannot read JXC.MDB")); });
    settle();
    EXPECT_EQ(ended, 1);
  });

  // Before the first window there is nothing to go on in: any failure ends the start, with its reason.
  ended = 0;
  expectNotice(QStringLiteral("磁盘空间已满"));
  ui::doOrEnd([] { throw DbError(DbError::Kind::Full, QStringLiteral("磁盘空间已满")); });
  EXPECT_EQ(ended, 1);
  ui::processEnd() = before;
}

TEST(RefreshAfterTest, TheListIsReadAnewAlsoWhenTheCommandFailsAndItsFailureIsTheOneTold) {
  int read = 0;
  const auto full = [] { throw DbError(DbError::Kind::Full, QStringLiteral("磁盘空间已满")); };
  const auto refresh = [&] {
    ++read;
    throw std::runtime_error("nothing can be read either");
  };
  EXPECT_THROW(ui::refreshAfter(full, refresh), DbError);
  EXPECT_THROW(ui::refreshAfter([] {}, refresh), std::runtime_error);
  EXPECT_EQ(read, 2);
}

TEST_F(ScreenTest, AWaitForAnotherStationIsSeenWhileTheCommandWaits) {
  ui::showWaits();
  open("F_Rjbz", [](ui::Screen& s) {
    const auto notice = [&s] { return s.findChild<QLabel*>(QStringLiteral("waitingNotice")); };
    {
      Wait wait;
      wait.passed(0);
      EXPECT_EQ(notice(), nullptr);
      wait.passed(1);
      wait.passed(3);
      ASSERT_NE(notice(), nullptr);
      EXPECT_TRUE(notice()->isVisible());
      EXPECT_TRUE(s.rect().contains(notice()->geometry()));
      EXPECT_TRUE(notice()->text().contains(u"3 秒"));
      EXPECT_FALSE(notice()->text().contains(u"Esc"));
      wait.passed(10);
      EXPECT_TRUE(notice()->text().contains(u"Esc"));
    }
    EXPECT_EQ(notice(), nullptr) << "it goes with the end of the wait";
  });
  setWaitListener({});
}

}  // namespace jxc::test
