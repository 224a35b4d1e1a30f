// Any template that the designer can make prints: sizes that make no sense, texts that do not fit, all at once.
#include "harness/gui.h"
#include "harness/report_samples.h"
#include "platform/report/template_file.h"

#include <QElapsedTimer>
#include <QImage>

#include <cmath>
#include <gtest/gtest.h>
#include <iterator>
#include <random>

namespace jxc::report_random_test {

using namespace report;

class Dice {
 public:
  explicit Dice(unsigned seed) : engine_(seed) {}
  int upTo(int most) { return static_cast<int>(engine_() % static_cast<unsigned>(most + 1)); }
  bool oneIn(int n) { return upTo(n - 1) == 0; }
  template <class T, std::size_t n>
  T of(const T (&values)[n]) {  // also of a list in braces
    return values[static_cast<std::size_t>(upTo(static_cast<int>(n) - 1))];
  }
  template <class E>
  E any(E last) {
    return static_cast<E>(upTo(static_cast<int>(last)));
  }

 private:
  std::mt19937 engine_;
};

Item randomItem(Dice& dice) {
  constexpr double sizes[] = {0, 0.01, 3, 8, 20, 60, 190, 500};
  constexpr const char16_t* contents[] = {u"",
                                          u"字",
                                          u"[g_name]",
                                          u"第[Page]页共[Pages]页",
                                          u"[Sum(ls_zje)] [Sum(ls_zje,'page')]",
                                          u"[ls_sl/0]",
                                          u"[",
                                          u"]][[",
                                          u"[[g_name]&']']",
                                          u"[string(300,'长')]",
                                          u"[comName]\n\n二",
                                          u"[Line] [GroupLine]",
                                          u"[Max(g_name,'running')]",
                                          u"690123456789",
                                          u"[nosuch]",
                                          u"data:image/png;base64,AAAA",
                                          u"/etc/hostname",
                                          u"  ，，，。。。（（（",
                                          u"aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa",
                                          u"\U0001F453眼镜"};
  Item item;
  item.kind = dice.any(ItemKind::Barcode);
  item.x = dice.of(sizes) - dice.of({0.0, 5.0, 60.0});
  item.y = dice.of(sizes) - dice.of({0.0, 5.0, 60.0});
  item.width = dice.of(sizes);
  item.height = dice.of({0.0, 0.01, 5.0, 12.0, 50.0});
  item.content = QString::fromUtf16(dice.of(contents));
  if (dice.oneIn(6)) item.visibleIf = QString::fromUtf16(dice.of({u"ls_sl>1", u"Page=Pages", u"1/0", u"(", u"null"}));
  item.background = dice.oneIn(3);
  item.followHeight = dice.oneIn(3);
  item.font.size = dice.of({1.0, 4.0, 9.0, 30.0, 200.0});
  item.font.bold = dice.oneIn(3);
  item.align = dice.any(HAlign::Spread);
  item.valign = dice.any(VAlign::Bottom);
  item.wrap = dice.oneIn(2);
  item.shrink = dice.oneIn(3);
  item.grow = dice.oneIn(3);
  item.lineSpacing = dice.of({0.5, 1.0, 3.0});
  item.paddingX = dice.of({0.0, 0.8, 50.0});
  item.paddingY = dice.of({0.0, 0.5, 50.0});
  item.rotation = 90 * dice.upTo(3);
  item.format = QString::fromUtf16(dice.of({u"", u"#,##0.00", u"yyyy年", u"%%%", u"0.0%"}));
  item.hideZero = dice.oneIn(3);
  item.hideRepeated = dice.oneIn(4);
  item.frame = static_cast<std::uint8_t>(dice.upTo(15));
  item.pen = {dice.of({0.0, 0.2, 5.0}), dice.any(PenStyle::Double), Qt::black};
  if (dice.oneIn(3)) item.fill = QColor(200, 220, 240, 128);
  item.shape = dice.any(ShapeKind::Diamond);
  item.rising = dice.oneIn(2);
  item.fit = dice.any(PictureFit::Original);
  item.symbology = dice.any(Symbology::Aztec);
  item.correction = 1 + dice.upTo(3);
  return item;
}

Template randomTemplate(Dice& dice) {
  Template t;
  PageSetup& page = t.page;
  page.width = dice.of({58.0, 80.0, 148.0, 210.0});
  page.height = dice.of({60.0, 139.7, 297.0, 3000.0});
  page.landscape = dice.oneIn(3);
  page.left = page.right = dice.of({0.0, 3.0, 20.0});
  page.top = page.bottom = dice.of({0.0, 3.0, 20.0});
  page.roll = dice.oneIn(4);
  page.preprinted = dice.oneIn(3);
  page.columns = dice.of({1, 1, 2, 5});
  page.columnGap = dice.of({0.0, 2.0});
  page.flow = dice.any(Flow::Across);
  for (int i = dice.upTo(2); i > 0; --i) {
    t.groups.push_back({QString::fromUtf16(dice.of({u"Line\\9", u"ls_sl", u"", u"1/0", u"Line mod 7"})), dice.oneIn(4),
                        dice.oneIn(2), dice.oneIn(2)});
  }
  for (int i = 2 + dice.upTo(8); i > 0; --i) {
    Band band;
    band.kind = dice.any(BandKind::Overlay);
    band.group = t.groups.empty() ? 0 : dice.upTo(static_cast<int>(t.groups.size()) - 1);
    if (t.groups.empty() && (band.kind == BandKind::GroupHeader || band.kind == BandKind::GroupFooter)) continue;
    band.height = dice.of({0.0, 5.0, 12.0, 40.0, 150.0});
    if (dice.oneIn(6)) band.visibleIf = QString::fromUtf16(dice.of({u"ls_sl<>2", u"Page>1", u"x"}));
    band.newPage = dice.oneIn(8);
    band.splits = dice.oneIn(3);
    band.atBottom = dice.oneIn(3);
    band.onFirstPage = !dice.oneIn(4);
    band.onLastPage = !dice.oneIn(4);
    if (dice.oneIn(3)) band.alternateFill = QColor(240, 240, 240);
    for (int k = dice.upTo(5); k > 0; --k)
      band.items.push_back(randomItem(dice));
    t.bands.push_back(band);
  }
  return t;
}

TEST(ReportRandomTemplates, WhateverTheModelHoldsIsKeptAndPrinted) {
  test::needGui();
  const Template sale = test::delivered("spxs");
  QElapsedTimer timer;
  for (unsigned seed = 1; seed <= 120; ++seed) {
    SCOPED_TRACE(seed);
    Dice dice(seed);
    Template t = randomTemplate(dice);
    t.variables = sale.variables;
    t.fields = sale.fields;
    EXPECT_EQ(parseTemplate(templateXml(t)), t);
    Report report = sampleReport(t, dice.upTo(30));
    report.setSkippedCells(dice.upTo(4));
    timer.start();
    const Pages pages = report.prepare();
    ASSERT_GE(pages.count(), 1);
    ASSERT_LE(pages.count(), 20000);
    for (int page = 0; page < pages.count(); page += 1 + pages.count() / 3) {
      EXPECT_TRUE(std::isfinite(pages.size(page).height()));
      EXPECT_FALSE(pages.image(page, 40).isNull());
      pages.lines(page);
    }
    pages.find(QStringLiteral("页"));
    EXPECT_LT(timer.elapsed(), 20000);
  }
}

}  // namespace jxc::report_random_test
