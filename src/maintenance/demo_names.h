// 演示账套的名称: a table of data: brands, lens products, sundries, people and partners of the demonstration shop. All
// of it is invented.
#pragma once

namespace jxc::demo {

using Word = const char16_t*;

struct Brand {
  Word name;
  int supplier;      // index of kSuppliers
  int price;         // yuan, about what a frame costs the shop
  bool sun = false;  // sunglasses
};
inline constexpr Brand kBrands[] = {
    {u"明澈", 0, 128},    {u"丹石", 0, 62},  {u"知行", 1, 210},       {u"云岭", 1, 96},        {u"青禾少年", 2, 74},
    {u"小树苗", 2, 48},   {u"远山", 3, 318}, {u"听风", 3, 156},       {u"素白", 4, 88},        {u"木作", 4, 265},
    {u"晨光工坊", 5, 36}, {u"北辰", 5, 142}, {u"夏岛", 6, 105, true}, {u"逐浪", 6, 188, true}, {u"晴空", 7, 58, true},
};

inline constexpr Word kFrameStyles[] = {u"钛合金全框镜架", u"板材复古圆框镜架", u"纯钛半框镜架", u"TR90轻弹镜架",
                                        u"金属细边镜架",   u"无框切边镜架",     u"板材方框镜架", u"商务记忆镜架",
                                        u"文艺多边形镜架", u"飞行员双梁镜架"};
inline constexpr Word kChildStyles[] = {u"儿童硅胶镜架", u"儿童TR90镜架", u"青少年运动镜架"};
inline constexpr Word kSunStyles[] = {u"偏光太阳镜", u"大框太阳镜", u"驾驶日夜两用镜", u"复古猫眼太阳镜", u"套镜"};
inline constexpr Word kColours[] = {u"黑色", u"枪色", u"玳瑁", u"金色", u"银色",
                                    u"透灰", u"茶色", u"墨绿", u"酒红", u"湖蓝"};

/// What goods earn whoever sells them, beside the commission of the employee.
struct OwnCommission {
  int kind = 0;       // 0 none, 1 yuan a piece, 2 percent of sales, 3 percent of profit
  double amount = 0;  // yuan or percent
};

struct LensProductLine {
  Word name;
  int supplier;
  int buy, sell;     // yuan a piece
  int popularity;    // weight among lens products
  bool progressive;  // stands in the class of progressive lenses
  OwnCommission commission = {};
};
inline constexpr LensProductLine kLensLines[] = {
    {u"晶朗1.56非球面绿膜", 8, 14, 58, 24, false},  {u"晶朗1.56防蓝光", 8, 28, 128, 30, false},
    {u"晶朗1.60非球面", 8, 46, 198, 26, false},     {u"晶朗1.67超薄非球面", 8, 118, 430, 14, false},
    {u"视源1.60防蓝光超韧", 9, 62, 268, 22, false}, {u"视源1.56变色灰片", 9, 70, 280, 10, false},
    {u"视源1.74超薄非球面", 9, 260, 980, 5, false}, {u"视源少年离焦控制", 9, 420, 1680, 9, false, {3, 6}},
    {u"晶朗1.56渐进多焦点", 8, 168, 680, 7, true},  {u"视源1.60渐进多焦点", 9, 320, 1280, 4, true},
    {u"晶朗1.61加硬抗冲击", 8, 55, 228, 8, false},  {u"视源1.67防蓝光膜层", 9, 150, 560, 7, false},
};

struct Sundry {
  Word name, model, unit;
  int buyFen, sellFen;  // fen
  int popularity;
  bool gift;
  OwnCommission commission = {};
};
inline constexpr Sundry kSundries[] = {
    {u"多功能护理液", u"360ml", u"瓶", 1760, 3900, 30, false, {1, 2}},
    {u"多功能护理液", u"120ml", u"瓶", 780, 1900, 14, false},
    {u"双氧水护理液", u"355ml", u"瓶", 4200, 9800, 6, false, {1, 5}},
    {u"隐形眼镜润眼液", u"10ml", u"瓶", 900, 2500, 12, false},
    {u"超细纤维擦镜布", u"15×18cm", u"张", 85, 500, 16, true},
    {u"硬质眼镜盒", u"大号", u"个", 420, 1500, 10, true},
    {u"折叠皮质眼镜盒", u"三角款", u"个", 960, 2800, 5, false},
    {u"镜片清洁喷雾", u"60ml", u"瓶", 360, 1200, 9, true},
    {u"硅胶防滑耳套", u"一对", u"付", 60, 500, 7, true},
    {u"可调运动眼镜绳", u"通用", u"根", 280, 1000, 4, false},
    {u"隐形眼镜伴侣盒", u"双联", u"个", 150, 600, 8, true},
    {u"气囊鼻托", u"一对", u"付", 40, 500, 5, false},
    {u"眼镜螺丝套装", u"通用", u"盒", 220, 800, 2, false},
    {u"儿童眼镜防丢带", u"弹力", u"根", 190, 800, 3, false},
};
inline constexpr int kSundrySupplier = 10;

struct ContactLine {
  Word name, model;
  int buy, sell;  // yuan a box
  int popularity;
  OwnCommission commission = {};
};
inline constexpr ContactLine kContactLines[] = {
    {u"清漾日抛隐形眼镜", u"14.2mm BC8.6 30片装", 96, 188, 12, {2, 2}},
    {u"清漾月抛隐形眼镜", u"14.0mm BC8.6 2片装", 34, 88, 20},
    {u"清漾半年抛隐形眼镜", u"14.0mm BC8.6 1片装", 22, 68, 16},
    {u"星眸彩色年抛", u"14.2mm 棕色 2片装", 30, 98, 10},
};
inline constexpr int kContactSupplier = 11;

struct SupplierName {
  Word name, contact, kind;
  int taxPercent;  // of its invoices; 0: no invoice
  int opening;     // yuan owed when the books began
};
inline constexpr SupplierName kSuppliers[] = {
    {u"丹阳明澈光学有限公司", u"蒋经理", u"A级供货商", 13, 18600},
    {u"深圳知行眼镜制造厂", u"黄小姐", u"A级供货商", 0, 26400},
    {u"温州青禾童镜有限公司", u"林经理", u"B级供货商", 0, 5200},
    {u"台州远山眼镜有限公司", u"郑经理", u"A级供货商", 13, 0},
    {u"厦门素白设计工作室", u"许小姐", u"B级供货商", 0, 8800},
    {u"丹阳晨光眼镜配件批发部", u"朱老板", u"C级供货商", 0, 0},
    {u"厦门夏岛太阳镜公司", u"陈经理", u"B级供货商", 0, 12300},
    {u"义乌晴空眼镜商行", u"吴老板", u"C级供货商", 0, 0},
    {u"上海晶朗镜片有限公司", u"沈经理", u"A级供货商", 13, 41500},
    {u"江苏视源光学科技", u"钱经理", u"A级供货商", 0, 33700},
    {u"广州洁视护理用品", u"何小姐", u"B级供货商", 0, 2600},
    {u"北京清漾隐形眼镜商贸", u"白经理", u"A级供货商", 0, 9400},
};

struct Institution {
  Word name, contact, level, levelKey, zone;
  int opening;
};
inline constexpr Institution kInstitutions[] = {
    {u"青年路加盟店", u"高店长", u"三级", u"1003", u"地市区域", 21600},
    {u"城南眼镜批发行", u"孔老板", u"三级", u"1003", u"省会地区", 8450},
    {u"实验小学视力筛查", u"徐老师", u"一级", u"1001", u"省会地区", 0},
    {u"第三中学校医室", u"马医生", u"一级", u"1001", u"省会地区", 3200},
    {u"城南社区卫生服务中心", u"钟主任", u"一级", u"1001", u"省会地区", 0},
    {u"宏达机械职工福利", u"丁主任", u"二级", u"1002", u"其他区域", 15800},
    {u"湖滨县光明眼镜店", u"傅老板", u"二级", u"1002", u"地市区域", 4700},
    {u"公交集团劳保科", u"彭科长", u"二级", u"1002", u"省会地区", 0},
};

inline constexpr Word kSurnames[] = {u"王", u"李", u"张", u"刘", u"陈", u"杨", u"赵", u"黄",
                                     u"周", u"吴", u"徐", u"孙", u"胡", u"朱", u"高", u"林",
                                     u"何", u"郭", u"马", u"罗", u"梁", u"宋", u"郑", u"谢"};
inline constexpr Word kGivenNames[] = {u"丽",   u"敏",   u"静",   u"强",   u"磊",   u"洋",   u"艳",   u"勇",
                                       u"军",   u"杰",   u"娟",   u"涛",   u"明",   u"超",   u"秀英", u"建国",
                                       u"子涵", u"浩然", u"欣怡", u"宇轩", u"梓萱", u"雨桐", u"志强", u"晓燕",
                                       u"文博", u"思远", u"佳慧", u"俊杰", u"海燕", u"国庆"};

struct Person {
  Word name, duty;
  int commission = 0;        // percent
  bool ofProfit = false;     // of what is earned, not of what is taken in …
  int fromProfitAPiece = 0;  // … and only of what a piece earns beyond so many yuan
};
inline constexpr Person kEmployees[] = {
    {u"周敏", u"店长", 6, true, 20}, {u"林小雨", u"营业员", 3}, {u"孙磊", u"采购员"},
    {u"赵强", u"验光师", 5, true},   {u"陈静", u"营业员", 3},   {u"刘洋", u"加工师"}};

/// Where customers by name live and how well they are known, per mille; the rest have no region and are retail.
struct Share {
  Word name;
  Word key;
  int perMille;
};
inline constexpr Share kZonesOfPeople[] = {{u"省会地区", u"", 560}, {u"地市区域", u"", 220}, {u"其他区域", u"", 90}};
inline constexpr Share kLevelsOfPeople[] = {{u"一级", u"1001", 140}, {u"二级", u"1002", 80}};

inline constexpr Word kStreets[] = {u"中山路", u"人民路", u"解放东路", u"青年路", u"湖滨路", u"建设街", u"文昌巷"};

}  // namespace jxc::demo
