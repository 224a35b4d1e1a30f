// The lock of the books on the screens: each of their commands writes on no day, or is one that the lock refuses.
#include "core/period_lock.h"
#include "maintenance/locked_commands.h"
#include "screens/harness/screen_test.h"

#include <QRegularExpression>

#include <algorithm>
#include <set>

namespace jxc::test {

/// What commands of screens do about days: one of `kLockedCommands`, or one of these. Names by blanks; "*" in one
/// stands for whatever is there. The first line that fits holds.
struct OnDays {
  std::string_view screens, commands, does;
};
constexpr std::string_view kReads = "reads", kUndated = "no day", kDraft = "draft", kOut = "out of the lock",
                           kAfter = "from the day after";
constexpr std::string_view kDocuments =
    "F_Bsby F_Cfkb F_Cgjh F_Cgrk F_Cgth F_Kcdb F_Kcpd F_Khjhgl F_Spck F_Spxs F_Xsth";
constexpr OnDays kOnDays[] = {
    {"*",
     "btnCancel btnClose btn_Exit btnSearch* btnOpenSearch btnPrin* btn_Prin* btn_Export btn_Chart btn_ChaKan "
     "btn_Dydj btn_Lxdy btn_Ckyd btn_Jhd btn_Ckmx btnPanel btnPreview* btn_Preview btnAllKh btnSpsj btnDate* "
     "btnToday btnMenu* btn_Cx btn_Cx1 btn_Cx2 btnCx* btn_Dzd btn_Fx* btn_Pc btnMb",
     kReads},
    {"F_Admin* F_Bbsj* F_Bjgl* F_Bqjl F_Ckgl* F_Dept F_Djbz F_Dwgl F_GhsZhgl* F_Khzhgl* F_Name F_PwdModi "
     "F_Role* F_Skin F_User* F_ViewLog F_Xtcs F_Xtsd F_Ywygl F_Ywyrz* F_Zmsd F_Zone* F_Zpgl F_Zpgl_Sele "
     "F_Zpgl2_Add F_Zpgl2_Modi F_Ghsgl_Copy F_Ghsgl_Jm F_Ghsgl_Type F_Khgl_Type F_Spxxgl_Jm F_Spxxgl_Jp* "
     "F_Spxxgl_Modi* F_Spxxgl_Move F_Spxxgl_Pfj F_Spxxgl_Tc F_Spxxgl_Zdkc F_Spxxgl_Class F_Spxxgl_Cam "
     "F_Fylx* F_Htgl* F_Gdzc* F_Backup* F_Ztgl* F_Guide F_Fdsz F_FdExport",
     "*", kUndated},
    // They take whole days of the books away, and say so.
    {"F_Sjql F_Nzjs*", "*", kUndated},
    {"F_Cwbb*", "*", kReads},
    {"F_Fyjsr", "btn_Fylx", kUndated},
    {"F_Fyjsr", "btn_Dele", kOut},
    {"F_Fyjsr", "btn_Check1 btn_Check", "expense audit"},
    {"F_Fyjsr", "btn_UnChk", "expense cancel"},
    {"F_Fyjsr F_Fyjsr_Add*", "btn_Fy btn_Sr btn_Modi btn_Copy* btnOK", "expense save"},
    {"F_Fpcg F_Fpxs", "btnDele", "invoice gone"},
    {"F_Fpcg F_Fpxs", "btn_CheckOne btn_Check", "invoice audit"},
    {"F_Fpcg F_Fpxs", "btn_UnChk", "excluded"},
    {"F_Fpcg F_Fpxs F_Fpcg_Sele2 F_Fpxs_Sele2", "btn_Xgjj btnOK", "registered"},
    {"F_Fpcg F_Fpxs F_Fpcg_Sele F_Fpxs_Sele", "btnAdd btnModi btnOK", "invoice save"},
    {"*_Cx *_Search F_Cfkb_Goods F_Ghs_Sele F_Kh_Sele F_GridMsg F_Mryt F_Preview F_Price F_PrinSele F_Rjbz", "*",
     kReads},
    {"F_ModiDate*", "*", "date"},
    {"*_Check", "*", "audit"},
    {"F_Xjyh", "btn_UnChk", "cash cancel"},
    {"F_*_Djcx F_Djcx F_Jthcx F_Jxctj F_Xsdjcx", "btn_UnChk btn_unCheck btn_UnChkAll", "cancel"},
    {"F_Khjhgl_Djcx F_Khjhgl_Hh F_Khjhgl_Hh_Sele", "btn_Khhh btnAddOld btnModi btnDel btnOK", "loan back"},
    {"F_Khjhgl_Djcx F_Khjhgl_Xs", "*", "loan kept"},
    {"F_Cgrk F_Spck", "btn_Qxck", "rest"},
    {"F_*_Djcx F_Jthcx F_Xsdjcx F_WlzwGhs F_WlzwKh F_Yfkgl F_Yskgl", "btn_Fukuan", "settle"},
    {"F_Yfkgl_Fk F_Yskgl_Sk", "btnSave", "settle"},
    {kDocuments, "btnOK", "save"},
    {kDocuments, "btnRCheck btnRChk btn_Check", "audit"},
    {kDocuments, "btn_Date", "head"},
    {kDocuments, "btn_Dele btn_Dele2 btn_Delete", kOut},
    {kDocuments, "btnAdd btnTab2* btnDele", "line"},
    {kDocuments, "*", kDraft},
    {"F_Jthcx F_Xsdjcx", "btn_Zdth", kDraft},
    {"F_Kcbj F_Kcbj_Modi", "*", kDraft},
    {"F_Qcjz_Dele", "*", "opening gone"},
    {"F_Qcjz", "btnDele", "opening gone"},
    {"F_Qcjz*", "*", "opening"},
    {"F_Ghsgl F_Khgl", "btnDele", "partner gone"},
    {"F_Ghsgl F_Khgl F_Ghsgl_Add F_Ghsgl_Modi F_Khgl_Add F_Khgl_Modi", "btnAdd btnModi btnOK", "partner"},
    {"F_Ghsgl F_Khgl", "*", kUndated},
    {"F_Spxxgl", "btnDele2", "goods gone"},
    {"F_Spxxgl_Dele", "*", "goods gone"},
    {"F_Spxxgl F_Spxxgl_Add*", "btnRAdd* btnSave", kAfter},
    {"F_Spxxgl F_Spxxgl_Add*", "*", kUndated},
    {"F_Xjyh", "btn_Dele", kOut},
    {"F_Xjyh", "btn_Check", "cash audit"},
    {"F_Xjyh F_Xjyh_*", "btn_Rukuan btn_Chuk btn_Yhzz btn_Modi btnOK", "cash save"},
    {"F_Xjyh", "btn_Yhzh", "account"},
    {"F_Yhzh", "btnDele", "account gone"},
    {"F_Yhzh*", "*", "account"},
    {"F_Yfkdj F_Yfkfk F_Yskdj F_Ysksk", "btn_Check", "partner audit"},
    {"F_Yfkdj F_Yfkfk F_Yskdj F_Ysksk", "btnDele", "partner cancel"},
    {"F_Yfkdj F_Yfkfk F_Yskdj F_Ysksk F_Yfkdj_Sele F_Yfkfk_Sele F_Yskdj_Sele F_Ysksk_Sele", "*", "partner save"},
    {"F_Fpcg F_Fpxs F_Sjhd F_Jxctj F_Xjyh F_Yfkgl F_Yskgl F_kccx_Hd", "btn_Cxjs btn_Jgtb", kAfter},
    {"F_Kccx_Js F_Jxctj_Tb F_Fpcg_Js F_Fpxs_Js F_Yfkgl_Js F_Yskgl_Js", "*", kAfter},
    {"F_Kccx_Jj", "*", "average"},
    {"F_Kccx", "btn_Xgjj", "average"},
    {"F_Kccx F_kccx_Hd F_Kccx_Tb", "*", "sync"},
    {"F_Zpgl2", "btn_Jh", "gift"},
    {"F_Zpgl2_Jh", "*", "gift"},
    {"F_Zpgl2", "*", kUndated},
    {"F_Sjhd", "btnOK", kReads},
    {"F_Bsby_* F_Cfkb_* F_Cgjh_* F_Cgrk_* F_Cgth_* F_Kcdb_* F_Kcpd_* F_Khjhgl_* F_Spck_* F_Spxs_* F_Xsth_* "
     "F_Jpgd",
     "*", "line"},
};

bool isAmong(std::string_view names, std::string_view name) {
  QString pattern = QString::fromUtf8(names.data(), qsizetype(names.size()));
  pattern.replace(u'*', u"\\w*"_qs).replace(u' ', u'|');
  return QRegularExpression(u"^("_qs + pattern + u")$"_qs)
      .match(QString::fromUtf8(name.data(), qsizetype(name.size())))
      .hasMatch();
}

TEST_F(ScreenTest, EachCommandWritesOnNoDayOrIsRefusedOnALockedOne) {
  std::set<std::string_view> missing(std::begin(kLockedCommands), std::end(kLockedCommands));
  for (const auto& screen : ui::registeredScreens())
    for (const auto& command : ui::screenNamed(screen).spec().commands) {
      const auto* const known = std::ranges::find_if(kOnDays, [&, name = std::string_view(screen)](const OnDays& each) {
        return isAmong(each.screens, name) && isAmong(each.commands, command.name);
      });
      const bool isKnown = known != std::end(kOnDays) || screen == "F_Sample";
      EXPECT_TRUE(isKnown) << screen << ' ' << command.name
                           << " is new: lock it and prove it, or say why it has no day";
      if (isKnown && known != std::end(kOnDays)) missing.erase(known->does);
    }
  EXPECT_EQ(missing, std::set<std::string_view>());
}

TEST_F(ScreenTest, ALockIsSetAndOpenedByKeysAndARefusalLeadsToTheDate) {
  open("F_Zmsd", [&](ui::Screen& s) {
    EXPECT_EQ(s.field("dateCg").text(), u"2021-04-30") << "the last day of the month before";
    type(s, "dateCg", u"2021-05-04");
    press(s, "F5", QStringLiteral("锁定日期不能晚于今天！"));
    EXPECT_TRUE(s.field("dateCg").hasFocus());
    type(s, "dateCg", u"2021-05-02");
    press(s, "F5",
          QStringLiteral("账目将锁定到 2021-05-02：\r\n\r\n这一天及以前的单据和账目不能再保存、更改日期、审核、取消审核"
                         "和删除。\r\n\r\n确认锁定吗？"),
          Answer::Yes);
    EXPECT_EQ(s.grid("gridHistory").current()->text("what"), u"锁定到 2021-05-02");
  });
  open("F_Xjyh_Jk", [&](ui::Screen& s) {
    type(s, "dateCg", u"2021-05-01");
    press(s, "F5", PeriodLock().against(u"2021-05-01"_qs).text);
    EXPECT_TRUE(s.field("dateCg").hasFocus());
  });
  open("F_Zmsd", [&](ui::Screen& s) {
    EXPECT_EQ(s.field("dateCg").text(), QString()) << "no day that is locked already is proposed";
    EXPECT_TRUE(s.grid("gridWaiting").isEmpty());
    press(s, "F5", QStringLiteral("日期必须填写！"));
    press(s, "F6",
          QStringLiteral("账目锁定到 2021-05-02，解除后这些日期的单据和账目又可以改动，\r\n\r\n确认解除锁定吗？"),
          Answer::Yes);
    EXPECT_FALSE(s.command("btnOpen").isEnabled());
  });
  EXPECT_EQ(PeriodLock().day(), QString());
}

}  // namespace jxc::test
