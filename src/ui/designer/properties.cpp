#include "ui/designer/properties.h"

#include "ui/skin.h"

#include <QFontDatabase>

#include <algorithm>
#include <type_traits>

namespace jxc::ui {

namespace properties_detail {

using report::Band;
using report::BandKind;
using report::Item;
using report::ItemKind;
using report::PageSetup;
using report::Template;

/// Follows pointers to members: follow<&Item::font, &FontStyle::size>(item).
template <auto First, auto... Rest, class Object>
auto& follow(Object& object) {
  if constexpr (sizeof...(Rest) == 0)
    return object.*First;
  else
    return follow<Rest...>(object.*First);
}

template <class T>
QVariant toVariant(const T& value) {
  if constexpr (std::is_enum_v<T> || std::is_same_v<T, std::uint8_t>)
    return static_cast<int>(value);
  else
    return QVariant::fromValue(value);
}

template <class T>
T fromVariant(const QVariant& value) {
  if constexpr (std::is_enum_v<T> || std::is_same_v<T, std::uint8_t>)
    return static_cast<T>(value.toInt());
  else
    return value.value<T>();
}

template <class Object>
struct Row {
  const char16_t* caption;
  Editor editor;
  unsigned kinds;  // of objects, as bits; of a band likewise
  QVariant (*get)(const Object&);
  void (*set)(Object&, const QVariant&);
  QStringList choices = {};
  double least = 0, most = 1000;
};

template <class Object, auto... Path>
Row<Object> row(const char16_t* caption, Editor editor, unsigned kinds, QStringList choices = {}, double least = 0,
                double most = 1000) {
  return {caption,
          editor,
          kinds,
          [](const Object& o) { return toVariant(follow<Path...>(o)); },
          [](Object& o, const QVariant& v) {
            auto& target = follow<Path...>(o);
            target = fromVariant<std::remove_cvref_t<decltype(target)>>(v);
          },
          std::move(choices),
          least,
          most};
}

template <class Object>
Row<Object> heading(const char16_t* caption, unsigned kinds) {
  return {caption, Editor::Heading, kinds, nullptr, nullptr};
}

constexpr unsigned of(ItemKind kind) {
  return 1u << static_cast<unsigned>(kind);
}
constexpr unsigned of(BandKind kind) {
  return 1u << static_cast<unsigned>(kind);
}
constexpr unsigned kEvery = ~0u;
constexpr unsigned kText = of(ItemKind::Text), kLine = of(ItemKind::Line), kShape = of(ItemKind::Shape),
                   kPicture = of(ItemKind::Picture), kBarcode = of(ItemKind::Barcode);

QStringList symbologyLabels() {
  QStringList labels;
  for (const auto symbology : report::symbologies())
    labels << report::symbologyLabel(symbology).toString();
  return labels;
}

/// Turning goes by quarters.
QVariant rotationOf(const Item& item) {
  return item.rotation / 90;
}
void setRotation(Item& item, const QVariant& value) {
  item.rotation = value.toInt() * 90;
}

const std::vector<Row<Item>>& itemRows() {
  using I = Item;
  using F = report::FontStyle;
  using P = report::Pen;
  const QStringList pens{u"实线"_qs, u"虚线"_qs, u"点线"_qs, u"双线"_qs};
  static const std::vector<Row<Item>> rows{
      row<I, &I::content>(u"内容", Editor::Expression, kText | kBarcode | kPicture),
      row<I, &I::name>(u"名称", Editor::Text, kEvery),
      heading<I>(u"位置（毫米）", kEvery),
      row<I, &I::x>(u"左", Editor::Number, kEvery),
      row<I, &I::y>(u"上", Editor::Number, kEvery),
      row<I, &I::width>(u"宽", Editor::Number, kEvery),
      row<I, &I::height>(u"高", Editor::Number, kEvery),
      {u"旋转",
       Editor::Choice,
       kText | kBarcode | kPicture,
       rotationOf,
       setRotation,
       {u"0°"_qs, u"90°"_qs, u"180°"_qs, u"270°"_qs}},
      heading<I>(u"文字", kText | kBarcode),
      row<I, &I::font, &F::family>(u"字体", Editor::OpenChoice, kText | kBarcode,
                                   QStringList{QString()} + QFontDatabase::families()),
      row<I, &I::font, &F::size>(u"字号（磅）", Editor::Number, kText | kBarcode, {}, 2, 200),
      row<I, &I::font, &F::bold>(u"粗体", Editor::Flag, kText),
      row<I, &I::font, &F::italic>(u"斜体", Editor::Flag, kText),
      row<I, &I::font, &F::underline>(u"下划线", Editor::Flag, kText),
      row<I, &I::font, &F::strikeOut>(u"删除线", Editor::Flag, kText),
      row<I, &I::font, &F::colour>(u"文字颜色", Editor::Colour, kText),
      row<I, &I::align>(u"水平对齐", Editor::Choice, kText, {u"靠左"_qs, u"居中"_qs, u"靠右"_qs, u"分散"_qs}),
      row<I, &I::valign>(u"垂直对齐", Editor::Choice, kText, {u"靠上"_qs, u"居中"_qs, u"靠下"_qs}),
      row<I, &I::wrap>(u"自动换行", Editor::Flag, kText),
      row<I, &I::grow>(u"自动增高", Editor::Flag, kText),
      row<I, &I::shrink>(u"缩小以适应", Editor::Flag, kText),
      row<I, &I::lineSpacing>(u"行距（倍）", Editor::Number, kText, {}, 0.5, 5),
      row<I, &I::paddingX>(u"左右边距", Editor::Number, kText, {}, 0, 50),
      row<I, &I::paddingY>(u"上下边距", Editor::Number, kText, {}, 0, 50),
      heading<I>(u"数值", kText),
      row<I, &I::format>(u"格式", Editor::OpenChoice, kText,
                         {QString(), u"#,##0.00"_qs, u"0.00"_qs, u"#.00"_qs, u"0"_qs, u"#,##0.##"_qs, u"yyyy-mm-dd"_qs,
                          u"yyyy年mm月dd日"_qs}),
      row<I, &I::hideZero>(u"零不打印", Editor::Flag, kText),
      row<I, &I::hideRepeated>(u"与上行相同不打印", Editor::Flag, kText),
      heading<I>(u"条码", kBarcode),
      row<I, &I::symbology>(u"条码类型", Editor::Choice, kBarcode, symbologyLabels()),
      row<I, &I::showCode>(u"显示数字", Editor::Flag, kBarcode),
      row<I, &I::correction>(u"二维码纠错级", Editor::Integer, kBarcode, {}, 1, 4),
      heading<I>(u"图形", kShape | kPicture | kLine),
      row<I, &I::shape>(u"形状", Editor::Choice, kShape,
                        {u"矩形"_qs, u"圆角矩形"_qs, u"椭圆"_qs, u"三角形"_qs, u"菱形"_qs}),
      row<I, &I::fit>(u"图片大小", Editor::Choice, kPicture, {u"完整放入"_qs, u"拉伸填满"_qs, u"原始大小"_qs}),
      row<I, &I::rising>(u"左下到右上", Editor::Flag, kLine),
      heading<I>(u"线条与底色", kText | kShape | kLine),
      row<I, &I::frame>(u"边框", Editor::Sides, kText),
      row<I, &I::pen, &P::width>(u"线宽", Editor::Number, kText | kShape | kLine, {}, 0, 20),
      row<I, &I::pen, &P::style>(u"线型", Editor::Choice, kText | kShape | kLine, pens),
      row<I, &I::pen, &P::colour>(u"线颜色", Editor::Colour, kText | kShape | kLine),
      row<I, &I::fill>(u"底色", Editor::Colour, kText | kShape),
      heading<I>(u"打印", kEvery),
      row<I, &I::visibleIf>(u"打印条件", Editor::Expression, kEvery),
      row<I, &I::background>(u"属于预印底单", Editor::Flag, kEvery),
      row<I, &I::followHeight>(u"随行增高", Editor::Flag, kEvery),
  };
  return rows;
}

const std::vector<Row<Band>>& bandRows() {
  constexpr unsigned onPages = of(BandKind::PageHeader) | of(BandKind::PageFooter) | of(BandKind::Overlay);
  static const std::vector<Row<Band>> rows{
      row<Band, &Band::height>(u"高度（毫米）", Editor::Number, kEvery),
      row<Band, &Band::visibleIf>(u"打印条件", Editor::Expression, kEvery),
      row<Band, &Band::newPage>(u"另起一页", Editor::Flag, kEvery & ~onPages),
      row<Band, &Band::splits>(u"可以跨页", Editor::Flag, kEvery & ~onPages),
      row<Band, &Band::atBottom>(u"靠页底", Editor::Flag, of(BandKind::Summary)),
      row<Band, &Band::onFirstPage>(u"首页打印", Editor::Flag, onPages),
      row<Band, &Band::onLastPage>(u"末页打印", Editor::Flag, onPages),
      row<Band, &Band::fill>(u"底色", Editor::Colour, kEvery),
      row<Band, &Band::alternateFill>(u"隔行底色", Editor::Colour, of(BandKind::MasterData)),
  };
  return rows;
}

const std::vector<Row<report::Group>>& groupRows() {
  using G = report::Group;
  static const std::vector<Row<G>> rows{
      heading<G>(u"分组", kEvery),
      row<G, &G::by>(u"分组依据", Editor::Expression, kEvery),
      row<G, &G::newPage>(u"每组另起一页", Editor::Flag, kEvery),
      row<G, &G::keepTogether>(u"尽量不跨页", Editor::Flag, kEvery),
      row<G, &G::repeatHeader>(u"续页重印组头", Editor::Flag, kEvery),
  };
  return rows;
}

const std::vector<Row<PageSetup>>& pageRows() {
  using S = PageSetup;
  static const std::vector<Row<S>> rows{
      row<S, &S::width>(u"纸宽（毫米）", Editor::Number, kEvery, {}, 20, 2000),
      row<S, &S::height>(u"纸高（毫米）", Editor::Number, kEvery, {}, 20, 2000),
      row<S, &S::landscape>(u"横向", Editor::Flag, kEvery),
      row<S, &S::left>(u"左边距", Editor::Number, kEvery, {}, 0, 200),
      row<S, &S::top>(u"上边距", Editor::Number, kEvery, {}, 0, 200),
      row<S, &S::right>(u"右边距", Editor::Number, kEvery, {}, 0, 200),
      row<S, &S::bottom>(u"下边距", Editor::Number, kEvery, {}, 0, 200),
      row<S, &S::roll>(u"卷纸（长度随内容）", Editor::Flag, kEvery),
      row<S, &S::preprinted>(u"套打（不印底单）", Editor::Flag, kEvery),
      heading<S>(u"分栏", kEvery),
      row<S, &S::columns>(u"栏数", Editor::Integer, kEvery, {}, 1, 20),
      row<S, &S::columnGap>(u"栏间距", Editor::Number, kEvery, {}, 0, 200),
      row<S, &S::flow>(u"排列", Editor::Choice, kEvery, {u"先下后右"_qs, u"先右后下"_qs}),
  };
  return rows;
}

/// `objects` gives those that are set; the last of them is read.
template <class Object>
Property bound(const Row<Object>& r, std::function<std::vector<Object*>(Template&)> objects) {
  Property p{QString::fromUtf16(r.caption), r.editor, r.choices, r.least, r.most};
  if (r.editor == Editor::Heading) return p;
  p.get = [get = r.get, objects](const Template& t) { return get(*objects(const_cast<Template&>(t)).back()); };
  p.set = [set = r.set, objects](Template& t, const QVariant& value) {
    for (Object* object : objects(t))
      set(*object, value);
  };
  return p;
}

std::vector<Property> itemProperties(const DesignDocument& document) {
  unsigned common = kEvery;
  for (const ItemRef ref : document.chosen())
    common &= of(document.item(ref).kind);
  std::vector<ItemRef> refs = document.chosen();
  const auto objects = [refs](Template& t) {
    std::vector<Item*> found;
    for (const ItemRef ref : refs)
      found.push_back(&t.bands[ref.band].items[ref.item]);
    return found;
  };
  std::vector<Property> result;
  for (const auto& r : itemRows()) {
    // A property is offered when every chosen object has it.
    const bool fits =
        std::ranges::all_of(refs, [&](ItemRef ref) { return (r.kinds & of(document.item(ref).kind)) != 0; });
    if (fits) result.push_back(bound<Item>(r, objects));
  }
  return result;
}

std::vector<Property> bandProperties(const DesignDocument& document) {
  const int number = document.chosenBand();
  const Band& band = document.current().bands[number];
  std::vector<Property> result;
  for (const auto& r : bandRows())
    if (r.kinds & of(band.kind))
      result.push_back(bound<Band>(r, [number](Template& t) { return std::vector{&t.bands[number]}; }));
  const bool ofGroup = band.kind == BandKind::GroupHeader || band.kind == BandKind::GroupFooter;
  if (ofGroup && band.group < static_cast<int>(document.current().groups.size()))
    for (const auto& r : groupRows())
      result.push_back(bound<report::Group>(r, [g = band.group](Template& t) { return std::vector{&t.groups[g]}; }));
  return result;
}

std::vector<Property> pageProperties() {
  std::vector<Property> result;
  Property title{u"报表名称"_qs, Editor::Text};
  title.get = [](const Template& t) { return t.title; };
  title.set = [](Template& t, const QVariant& v) { t.title = v.toString(); };
  Property paper{u"纸张"_qs, Editor::Choice};
  for (const auto& p : report::papers())
    paper.choices << QString::fromUtf16(p.name);
  paper.choices << u"自定义"_qs;
  paper.get = [](const Template& t) {
    const auto* found = report::findPaper(t.page);
    return static_cast<int>(found ? found - report::papers().data() : std::ssize(report::papers()));
  };
  paper.set = [](Template& t, const QVariant& v) {
    if (v.toInt() < std::ssize(report::papers())) report::usePaper(t.page, report::papers()[v.toInt()]);
  };
  result.push_back(std::move(title));
  result.push_back(std::move(paper));
  for (const auto& r : pageRows())
    result.push_back(bound<PageSetup>(r, [](Template& t) { return std::vector{&t.page}; }));
  return result;
}

}  // namespace properties_detail

std::vector<Property> propertiesOf(const DesignDocument& document) {
  using namespace properties_detail;
  if (!document.chosen().empty()) return itemProperties(document);
  if (document.chosenBand() >= 0) return bandProperties(document);
  return pageProperties();
}

QString titleOf(const DesignDocument& document) {
  if (document.chosen().size() > 1) return u"%1 个对象"_qs.arg(document.chosen().size());
  if (document.chosen().size() == 1) {
    const auto& item = document.item(document.chosen().front());
    return report::itemKindLabel(item.kind).toString() + u' ' + item.name;
  }
  if (document.chosenBand() >= 0)
    return report::bandKindLabel(document.current().bands[document.chosenBand()].kind).toString();
  return u"页面"_qs;
}

}  // namespace jxc::ui
