#!/usr/bin/env python3
"""Writes the report templates that come with the program, report/*.fr3, from one description of each paper.
A table of data, and what draws it.

Usage: tools/report_templates.py [--check]      (--check: writes nothing; exit status 1 when a file differs)

The forms of one family differ in a column or a line only. Here a paper is its columns, its heading and its foot, and
how a heading, a table or a signature looks is said once. A shop changes its own copies with the designer; whoever
changes what is delivered changes the description here and runs this file.
"""

import pathlib
import re
import sys
from dataclasses import dataclass, field, replace
from xml.sax.saxutils import escape, quoteattr

REPORT = pathlib.Path(__file__).resolve().parent.parent / "report"
INK = "#333333"  # frames: lighter than the words, dark enough for a needle printer


# ---- names: what the designer shows of a variable or field, and with what it fills a sample ----------------------------

VARIABLES = {
    "comName": ("公司名称", "'晴川眼镜有限公司'"), "comTele": ("公司电话", "'0571-88886666'"),
    "comLxr": ("公司联系人", "'陈晓'"), "comAddress": ("公司地址", "'杭州市西湖区文三路 90 号'"),
    "djh": ("单据编号", "'XS21050310001'"), "jhDate": ("单据日期", "'2021-05-03'"), "ckName": ("仓库", "'总店仓库'"),
    "uName": ("经办人", "'王芳'"), "aName": ("操作员", "'admin'"), "Kmmc": ("账户", "'现金'"),
    "Note": ("备注", "'镜片请附检测报告'"), "gldjh2": ("原始单号", "'A-2021-118'"), "yunfei": ("运费", "'12.00'"),
    "baozfei": ("包装费", "'3.00'"), "fpno": ("发票号码", "'04412368'"), "checker": ("审核人", "'李明'"),
    "chkrq": ("审核日期", "'2021-05-03'"), "xxyh": ("优惠金额", "'6.50'"), "xxyf": ("应付(应收)金额", "'12806.50'"),
    "xxsf": ("实付(实收)金额", "'12800.00'"), "yf": ("应付(应收)金额大写", "'壹万贰仟捌佰零陆元伍角'"),
    "sf": ("实付(实收)金额大写", "'壹万贰仟捌佰元整'"), "khqk": ("此前欠款", "'1500.00'"),
    "ljqkje": ("累计欠款", "'1506.50'"), "ghsName": ("供货商名称", "'上海明视光学有限公司'"),
    "ghsLxr": ("供货商联系人", "'赵强'"), "ghsTele": ("供货商电话", "'021-66668888'"),
    "ghsAddress": ("供货商地址", "'上海市闵行区七莘路 12 号'"), "ghsNote": ("供货商备注", "''"),
    "khName": ("客户名称", "'杭州视康眼科门诊部'"), "khLxr": ("客户联系人", "'周敏'"),
    "khTele": ("客户电话", "'0571-87654321'"), "khAddress": ("客户地址", "'杭州市上城区中河路 66 号'"),
    "khNote": ("客户备注", "''"), "ckOut": ("调出仓库", "'总店仓库'"), "ckIn": ("调入仓库", "'二号店'"),
    "gName": ("商品名称", "'镜架镜片套装'"), "gSn": ("商品编号", "'10000001'"), "dwName": ("单位", "'副'"),
    "ggName": ("规格型号", "'52-18'"), "colorName": ("颜色", "'黑'"), "cfCbj": ("成本价", "'260.00'"),
    "cfSl": ("数量", "'5'"), "cfZje": ("金额", "'1300.00'"), "cfNote": ("备注", "''"), "dNote": ("备注", "''"),
    "title": ("标题", "'商品报损单'"), "djName": ("单据名称", "'借货'"), "date1": ("开始日期", "'2021-05-01'"),
    "date2": ("结束日期", "'2021-05-31'"), "rq": ("日期", "'2021-05-03'"), "name": ("往来单位", "'杭州视康眼科门诊部'"),
    "lxr": ("联系人", "'周敏'"), "tele": ("电话", "'0571-87654321'"), "fkfs": ("账户", "'现金'"),
    "je": ("金额", "'2000.00'"), "mlje": ("抹零", "'.50'"), "note": ("备注", "''"), "djh2": ("关联单据", "'XS21050310001'"),
    "ysyfje": ("余额", "'1500.00'"), "djyf": ("单据应收(应付)", "'3500.00'"), "djsf": ("单据已收(已付)", "'1000.00'"),
    "djhk": ("已回款", "'2000.00'"), "djwf": ("尚余", "'500.00'"), "kmmc": ("账户", "'现金'"),
    "lx": ("类型", "'房租'"), "bm": ("部门", "'门店'"),
    "kmmc2": ("入款账户", "''"), "bTitle": ("标题", "'客户对账单'"), "sLjjeAll": ("期末余额", "'1500.00'"),
    "sTitle": ("标题", "'POS退货单'"), "bt1": ("标题1", "'眼镜专卖店'"), "bt2": ("标题2", "'欢迎惠顾'"),
    "jz1": ("脚注1", "'请妥善保管小票，凭小票取镜、保养和调校'"), "jz2": ("脚注2", "'谢谢光临，欢迎再次惠顾'"),
    "fkfs1": ("付款方式", "'现金'"), "hybh": ("会员卡号", "'100086'"), "hyye": ("储值余额", "'300.00'"),
    "hyjf": ("会员积分", "'1280'"), "hyname": ("会员姓名", "'周敏'"), "hymobile": ("会员手机", "'13800000000'"),
    "hytele": ("会员电话", "''"), "khwhere": ("条件", "'全部仓库'"),
    "pos_name": ("顾客姓名", "'周敏'"), "pos_tele": ("顾客电话", "'13800000000'"), "pos_qjz": ("球镜左", "'-2.50'"),
    "pos_qjy": ("球镜右", "'-2.75'"), "pos_zjz": ("柱镜左", "'-0.50'"), "pos_zjy": ("柱镜右", "'-0.75'"),
    "pos_zxz": ("轴向左", "'175'"), "pos_zxy": ("轴向右", "'5'"), "pos_jzslz": ("矫正视力左", "'1.0'"),
    "pos_jzsly": ("矫正视力右", "'1.0'"), "pos_tj": ("瞳距", "'62'"), "pos_add": ("下加光", "'1.50'"),
    "pos_yt": ("瞳高", "'18'"), "pos_qjrq": ("取镜日期", "'2021-05-06'"), "pos_bz": ("备注", "''"),
    "pos_ygs": ("验光师", "'李明'"), "pos_jgy": ("加工员", "'张伟'"), "pos_xsy": ("销售员", "'王芳'"),
}

FIELDS = {
    "g_sn": ("商品编号", "10000001"), "g_name": ("商品名称", "1.60 非球面防蓝光镜片"), "gg_name": ("规格型号", "-2.50/-0.50"),
    "color_name": ("颜色", "绿膜"), "dw_name": ("单位", "片"), "g_sptm": ("商品条码", "6901234567892"),
    "g_bz": ("包装", "1"), "g_sccs": ("产地", "丹阳"), "gc_name": ("商品类别", "镜片"), "sj": ("折后含税价", "128"),
}


# ---- elements --------------------------------------------------------------------------------------------------------

def attributes(pairs):
    return "".join(f" {name.replace('_', '-')}={quoteattr(str(value))}" for name, value in pairs.items() if value != "")


def number(value):
    return f"{round(value, 2):g}"


@dataclass
class Item:
    tag: str
    content: str
    attributes: dict

    def xml(self):
        body = escape(self.content)
        return f"    <{self.tag}{attributes(self.attributes)}>{body}</{self.tag}>\n" if body else \
            f"    <{self.tag}{attributes(self.attributes)}/>\n"


def text(x, y, width, height, content, align="", size=9, bold=False, **more):
    pairs = {"x": number(x), "y": number(y), "width": number(width), "height": number(height)}
    if size != 9:
        pairs["size"] = size
    if bold:
        pairs["bold"] = "yes"
    if align:
        pairs["align"] = align
    pairs.update(more)
    return Item("text", content, pairs)


def line(x, y, width, **more):
    return Item("line", "", {"x": number(x), "y": number(y), "width": number(width), "height": 0, "pen-colour": INK,
                             "background": "yes", **more})


def band(kind, height, items, **more):
    return f'  <band kind="{kind}" height="{number(height)}"{attributes(more)}>\n' + \
        "".join(item.xml() for item in items) + "  </band>\n"


# ---- papers ----------------------------------------------------------------------------------------------------------

@dataclass(frozen=True)
class Paper:
    width: float
    height: float
    left: float = 10
    top: float = 10
    right: float = 10
    bottom: float = 10
    more: tuple = ()

    @property
    def body(self):
        return (self.height if dict(self.more).get("landscape") else self.width) - self.left - self.right

    def xml(self):
        pairs = {"width": number(self.width), "height": number(self.height)}
        for side in ("left", "top", "right", "bottom"):
            if getattr(self, side) != 10:
                pairs[side] = number(getattr(self, side))
        pairs.update(self.more)
        return f"  <page{attributes(pairs)}/>\n"


HALF = Paper(241, 139.7, 15, 6, 15, 5)         # half of a continuous form, its holes left free
A4 = Paper(210, 297, 12, 12, 12, 12)
A4_WIDE = Paper(210, 297, 12, 12, 12, 12, (("landscape", "yes"),))
ROLL80 = Paper(80, 3000, 4, 3, 4, 3, (("roll", "yes"),))
ROLL58 = Paper(58, 3000, 2.5, 3, 2.5, 3, (("roll", "yes"),))


# ---- tables ----------------------------------------------------------------------------------------------------------

@dataclass(frozen=True)
class Column:
    caption: str
    content: str          # "[g_name]"
    width: float = 0      # share of the paper's width, in millimetres of the design
    align: str = ""       # "" left, "center", "right"
    format: str = ""
    sum: bool = False     # summed in the last line
    grow: bool = False    # long texts take a second line
    hide_zero: bool = False
    shrink: bool = True
    wrap: bool = False    # two small lines rather than one that nobody can read
    wide: bool = True     # one that grows also takes what width is left over


def money(caption, field_name, width=22, total=True, **more):
    return Column(caption, f"[{field_name}]", width, "right", "#,##0.00", sum=total, **more)


def price(caption, field_name, width=20, **more):
    return Column(caption, f"[{field_name}]", width, "right", "#,##0.00##", **more)


def quantity(caption, field_name, width=16, total=True, **more):
    return Column(caption, f"[{field_name}]", width, "right", sum=total, **more)


def words(caption, field_name, width, grow=False, align=""):
    return Column(caption, f"[{field_name}]", width, align, grow=grow, shrink=not grow)


def remark(field_name, width=16):
    """Mostly empty, but what the shop wrote there is there in full."""
    return replace(words("备注", field_name, width, True), wide=False)


RUNNING = Column("序号", "[line]", 9, "center")
GOODS = (RUNNING, words("商品编号", "g_sn", 20), words("商品名称", "g_name", 50, True), words("规格型号", "gg_name", 22, True),
         replace(words("颜色", "color_name", 12), wrap=True), words("单位", "dw_name", 9, align="center"))


def guarded(column):
    """A figure that only roles see who see cost."""
    return replace(column, content=f"[iif(seesCost,{column.content[1:-1]},null)]")


def spread(columns, body):
    """The columns with widths that fill the body exactly; names take what is left over."""
    taken = sum(c.width for c in columns)
    free = body - taken
    growing = [c for c in columns if c.grow and c.wide]
    if growing and free >= -sum(c.width for c in growing) * 0.4:
        whole = sum(c.width for c in growing)
        scaled = [replace(c, width=c.width + free * c.width / whole) if c in growing else c for c in columns]
    else:
        scaled = [replace(c, width=c.width * body / taken) for c in columns]
    widths = [round(c.width, 1) for c in scaled]
    widths[max(range(len(widths)), key=lambda i: widths[i])] += round(body - sum(widths), 1)
    return [replace(c, width=w) for c, w in zip(scaled, widths)]


def places(columns):
    x = 0.0
    for column in columns:
        yield x, column
        x += column.width


def column_header(columns, height=6.5, size=9):
    return band("column-header", height, [
        text(x, 0, c.width, height, c.caption, "center", size, True, frame="all", pen_colour=INK, fill="#f2f4f7", shrink="yes",
             background="yes")
        for x, c in places(columns)])


def detail(columns, height=5.8, size=9):
    items = []
    for x, c in places(columns):
        more = {"frame": "all", "pen-colour": INK, "padding-x": 0.8}
        if c.grow:
            more["grow"] = "yes"
        elif c.shrink:
            more["shrink"] = "yes"
        if c.wrap:
            more.update({"wrap": "yes", "padding-y": 0.4})
        if c.format:
            more["format"] = c.format
        if c.hide_zero:
            more["hide-zero"] = "yes"
        more["follow-height"] = "yes"
        items.append(text(x, 0, c.width, height, c.content, c.align, size, **more))
    return band("master-data", height, items)


def sums(columns, caption="合计", height=6.5, size=9):
    """The line of totals: the caption spans what stands before the first sum."""
    items, x, start = [], 0.0, None
    lead = 0.0
    for column in columns:
        if column.sum:
            break
        lead += column.width
    items.append(text(0, 0, lead, height, caption, "center", size, True, frame="all", pen_colour=INK))
    for x, c in places(columns):
        if x < lead - 0.01:
            continue
        content = f"[sum({c.content[1:-1]})]" if c.sum else ""
        more = {"frame": "all", "pen-colour": INK, "padding-x": 0.8, "shrink": "yes"}
        if c.format:
            more["format"] = c.format
        items.append(text(x, 0, c.width, height, content, c.align, size, True, **more))
    return items


# ---- a whole template ------------------------------------------------------------------------------------------------

@dataclass
class Template:
    name: str
    title: str
    paper: Paper
    bands: list
    fields: dict = field(default_factory=dict)
    variables: dict = field(default_factory=dict)  # of this paper alone

    def xml(self):
        body = "".join(self.bands)
        inside = re.findall(r"\[([^\]]*)\]", body) + re.findall(r'visible-if="([^"]*)"', body)
        said = set(re.findall(r"(?<![.\w'])[A-Za-z_]\w*", " ".join(inside)))
        known = VARIABLES | self.variables
        used = [name for name in known if name in said]
        names = dict(FIELDS)
        names.update(self.fields)
        out = [f'<?xml version="1.0" encoding="UTF-8"?>\n<report version="1" title={quoteattr(self.title)}>\n', self.paper.xml()]
        for name in dict.fromkeys(["comName", "comTele", "comLxr", "comAddress"] + used):
            label, sample = known[name]
            out.append(f"  <variable{attributes({'name': name, 'label': label, 'sample': sample})}/>\n")
        for name, (label, sample) in names.items():
            if name not in used:
                out.append(f"  <field{attributes({'name': name, 'label': label, 'sample': sample})}/>\n")
        return "".join(out) + body + "</report>\n"


PAGES = "第 [page] 页 共 [pages] 页"


def heading(paper, title, rows, company_size=13, title_size=13, top_left="", top_right="", row_height=5.2,
            kind="page-header"):
    """Company and title in the middle, what identifies the document below: rows of (caption, content, share)."""
    width = paper.body
    items = [text(0, 0, width, 7, "[comName]", "center", company_size, True, shrink="yes"),
             text(0, 7, width, 6.5, title, "center", title_size, True)]
    if top_left:
        items.append(text(0, 8, 60, 5, top_left, visible_if="gldjh2<>''"))
    if top_right:
        items.append(text(width - 60, 8, 60, 5, top_right, "right"))
    y = 14
    for row in rows:
        whole = sum(share for _, share in row)
        x = 0.0
        for content, share in row:
            part = width * share / whole
            items.append(text(x, y, part, row_height, content, shrink="yes"))
            x += part
        y += row_height
    return band(kind, y + 1, items)


def signatures(paper, names, left="[comAddress]  电话：[comTele]", height=11):
    """Who signs, and below it the company's address and the number of the page."""
    width, part = paper.body, paper.body / len(names)
    items = [text(i * part, 0.5, part, 5.5, name) for i, name in enumerate(names)]
    items.append(text(0, 6, width - 50, 5, left, size=8, colour="#555555", shrink="yes"))
    items.append(text(width - 50, 6, 50, 5, PAGES, "right", 8))
    return band("page-footer", height, items)


def cells(paper, rows, y=0.0, height=6.2):
    """Framed cells over the whole width: rows of (content, share[, more])."""
    items = []
    for row in rows:
        whole = sum(cell[1] for cell in row)
        x = 0.0
        for content, share, *more in row:
            part = round(paper.body * share / whole, 2)
            items.append(text(x, y, part, height, content, shrink="yes", frame="all", pen_colour=INK, padding_x=1,
                              **(more[0] if more else {})))
            x += part
        y += height
    return items, y


def shown(name):
    """A money variable is text in the form of the documents; a paper shows it with its thousands."""
    return f"[format(val({name}),'#,##0.00')]"


def document(name, title, columns, rows, foot, names, paper=HALF, fields=None, top_left="", top_right="单据编号：[djh]", total=True):
    columns = spread(columns, paper.body)
    summary = sums(columns) if total else []
    below, end = cells(paper, foot, 6.5 if total else 0)
    bands = [heading(paper, title, rows, top_left=top_left, top_right=top_right), column_header(columns), detail(columns)]
    if summary or below:
        bands.append(band("summary", end + 0.5, summary + below))
    bands.append(signatures(paper, names))
    return Template(name, title, paper, bands, fields or {})


def list_report(name, title, columns, paper=A4_WIDE, rows=((("日期：[date1] 至 [date2]", 2), ("制表人：[aName]", 1)),), fields=None,
                foot=(), total=True, size=8.5):
    columns = spread((RUNNING,) + tuple(columns), paper.body)
    items = [text(0, 0, paper.body, 8, "[comName]", "center", 15, True, shrink="yes"),
             text(0, 8, paper.body, 7, title, "center", 13, True)]
    y = 16
    for row in rows:
        whole, x = sum(s for _, s in row), 0.0
        for content, share in row:
            part = paper.body * share / whole
            items.append(text(x, y, part, 5.5, content, "right" if x > 0 else "", shrink="yes"))
            x += part
        y += 5.5
    bands = [band("report-title", y + 1, items), column_header(columns, 7, size), detail(columns, 6, size)]
    below, end = cells(paper, foot, 6.5 if total else 0)
    if total or below:
        bands.append(band("summary", max(end, 6.5) + 0.5, (sums(columns, size=size) if total else []) + below))
    bands.append(band("page-footer", 7, [
        text(0, 1.5, paper.body / 2, 5, "打印时间：[format(now(),'yyyy-mm-dd hh:nn')]", size=8, colour="#555555"),
        text(paper.body / 2, 1.5, paper.body / 2, 5, PAGES, "right", 8)]))
    return Template(name, title, paper, bands, fields or {})


# ---- trading documents -----------------------------------------------------------------------------------------------

def trade_fields(prefix):
    figures = (("dj", "单价", "120"), ("sl", "数量", "2"), ("je", "金额", "240"), ("tax", "税率", "0"), ("taxdj", "含税单价", "120"),
               ("taxje", "税额", "0"), ("dzl", "打折率", "1"), ("zje", "总金额", "240"), ("bz", "备注", ""))
    return {f"{prefix}_{key}": (label, sample) for key, label, sample in figures}


# Names of companies are long: they get half of the paper.
CUSTOMER_ROWS = ((("客户：[khName]", 7), ("电话：[khTele]", 3), ("日期：[jhDate]", 3)),
                 (("地址：[khAddress]", 7), ("联系人：[khLxr]", 3), ("仓库：[ckName]", 3)))
SUPPLIER_ROWS = ((("供货商：[ghsName]", 7), ("电话：[ghsTele]", 3), ("日期：[jhDate]", 3)),
                 (("地址：[ghsAddress]", 7), ("联系人：[ghsLxr]", 3), ("仓库：[ckName]", 3)))
ORIGINAL = "原始单号：[gldjh2]"  # of the other side, where it has one
LONG = {"grow": "yes"}  # words of the shop: all of them stand on the paper
NOTE_ROW = (("备注：[Note]", 1, LONG),)


def capitals(caption="金额大写"):
    return f"{caption}：[yf]"


def sale_documents():
    line = trade_fields("ls") | {"ls_lsj": ("零售价", "168"), "gl_djh": ("单据编号", "XS21050310001")}
    foot = ((("应收金额大写：[yf]", 5), (f"应收：{shown('xxyf')}", 2), (f"实收：{shown('xxsf')}", 2), (f"优惠：{shown('xxyh')}", 2)),
            ((f"此前欠款：{shown('khqk')}", 3), (f"累计欠款：{shown('ljqkje')}", 3), (f"运费：{shown('yunfei')}  包装费：{shown('baozfei')}", 3),
             ("收款账户：[Kmmc]", 2)), NOTE_ROW)
    names = ("经办人：[uName]", "制单：[aName]", "审核：[checker]", "送货人：", "客户签收：")
    note = remark("ls_bz")
    yield document("spxs", "商品销售单", GOODS + (quantity("数量", "ls_sl"), price("单价", "sj"), money("金额", "ls_zje"), note),
                   CUSTOMER_ROWS, foot, names, fields=line, top_left=ORIGINAL)
    yield document("spxs2", "商品销售单", GOODS + (quantity("数量", "ls_sl"), price("零售价", "ls_lsj", 18, hide_zero=True),
                                              price("单价", "sj", 18), money("金额", "ls_zje"), note),
                   CUSTOMER_ROWS, foot, names, fields=line, top_left=ORIGINAL)
    yield document("spxs4", "商品销售单", GOODS + (quantity("数量", "ls_sl"), words("产地", "g_sccs", 20), replace(note, width=30)),
                   CUSTOMER_ROWS, (NOTE_ROW,), names, fields=line, top_left=ORIGINAL)

    line = trade_fields("th") | {"th_lsj": ("零售价", "168"), "gl_djh": ("单据编号", "XT21050310001")}
    foot = ((("应退金额大写：[yf]", 5), (f"应退：{shown('xxyf')}", 2), (f"实退：{shown('xxsf')}", 2)),
            ((f"此前欠款：{shown('khqk')}", 3), (f"累计欠款：{shown('ljqkje')}", 3), ("付款账户：[Kmmc]", 3)), NOTE_ROW)
    names = ("经办人：[uName]", "制单：[aName]", "审核：[checker]", "收货人：", "客户签字：")
    note = remark("th_bz")
    yield document("xsth", "顾客退货单", GOODS + (quantity("数量", "th_sl"), price("单价", "sj"), money("金额", "th_zje"), note),
                   CUSTOMER_ROWS, foot, names, fields=line)
    yield document("xsth2", "顾客退货单", GOODS + (quantity("数量", "th_sl"), price("零售价", "th_lsj", 18, hide_zero=True),
                                              price("单价", "sj", 18), money("金额", "th_zje"), note),
                   CUSTOMER_ROWS, foot, names, fields=line)
    yield document("xsth4", "顾客退货单", GOODS + (quantity("数量", "th_sl"), words("产地", "g_sccs", 20), replace(note, width=30)),
                   CUSTOMER_ROWS, (NOTE_ROW,), names, fields=line)


def purchase_documents():
    line = trade_fields("jh") | {"j_sn": ("单据编号", "CJ21050310001")}
    foot = ((("应付金额大写：[yf]", 5), (f"应付：{shown('xxyf')}", 2), (f"实付：{shown('xxsf')}", 2), (f"优惠：{shown('xxyh')}", 2)),
            (("付款账户：[Kmmc]", 3), (f"运费：{shown('yunfei')}", 2), (f"包装费：{shown('baozfei')}", 2), ("发票号码：[fpno]", 3)), NOTE_ROW)
    names = ("经办人：[uName]", "制单：[aName]", "审核：[checker]", "收货人：", "供货商签字：")
    note = remark("jh_bz")
    yield document("cgjh", "采购进货单", GOODS + (quantity("数量", "jh_sl"), price("单价", "sj"), money("金额", "jh_zje"), note),
                   SUPPLIER_ROWS, foot, names, fields=line, top_left=ORIGINAL)
    yield document("cgjh2", "采购进货单", GOODS + (quantity("数量", "jh_sl"), words("产地", "g_sccs", 20), replace(note, width=30)),
                   SUPPLIER_ROWS, (NOTE_ROW,), names, fields=line, top_left=ORIGINAL)
    line = trade_fields("th") | {"gl_djh": ("单据编号", "CT21050310001")}
    foot = ((("应收金额大写：[yf]", 5), (f"应收：{shown('xxyf')}", 2), (f"实收：{shown('xxsf')}", 2), ("收款账户：[Kmmc]", 2)), NOTE_ROW)
    names = ("经办人：[uName]", "制单：[aName]", "审核：[checker]", "发货人：", "供货商签收：")
    note = remark("th_bz")
    yield document("cgth", "采购退货单", GOODS + (quantity("数量", "th_sl"), price("单价", "sj"), money("金额", "th_zje"), note),
                   SUPPLIER_ROWS, foot, names, fields=line)
    yield document("cgth2", "采购退货单", GOODS + (quantity("数量", "th_sl"), words("产地", "g_sccs", 20), replace(note, width=30)),
                   SUPPLIER_ROWS, (NOTE_ROW,), names, fields=line)


# ---- stock documents -------------------------------------------------------------------------------------------------

def stock_documents():
    names = ("经办人：[uName]", "制单：[aName]", "审核：[checker]", "仓库：")
    rows = ((("调出仓库：[ckOut]", 3), ("调入仓库：[ckIn]", 3), ("日期：[jhDate]", 2)),)
    transfer = {"db_sl": ("数量", "2"), "db_dj": ("单价", "80"), "db_sj": ("售价", "168"), "db_zje": ("金额", "160"),
                "g_sj": ("预设售价", "168"), "sjje": ("售价金额", "336"), "gl_djh": ("单据编号", "DB21050310001")}
    both = names[:3] + ("调出签字：", "调入签字：")
    yield document("kcdbd", "库存调拨单", GOODS + (quantity("数量", "db_sl"), guarded(price("单价", "db_dj")), guarded(money("金额", "db_zje"))), rows,
                   (NOTE_ROW,), both, fields=transfer)
    yield document("kcdbd3", "库存调拨单", GOODS + (quantity("数量", "db_sl"),), rows, (NOTE_ROW,), both, fields=transfer)
    yield document("kcdbd2", "库存调拨单", GOODS + (quantity("数量", "db_sl"), price("售价", "db_sj"), money("金额", "sjje")), rows,
                   ((("售价金额大写：[yf]", 1),), NOTE_ROW), both, fields=transfer)

    rows = ((("仓库：[ckName]", 3), ("日期：[jhDate]", 2)),)
    stocktake = {"kc_sl": ("帐面数量", "10"), "pd_sl": ("盘点数量", "9"), "cysl": ("盈亏数量", "-1"), "pd_dj": ("成本价", "80"),
                 "pd_zje": ("盈亏金额", "-80"), "gl_djh": ("单据编号", "PD21050310001")}
    counted = GOODS + (quantity("帐面数量", "kc_sl", 18), quantity("盘点数量", "pd_sl", 18), quantity("盈亏数量", "cysl", 18))
    signed = ("盘点人：", "制单：[aName]", "复核：", "负责人：")
    yield document("kcpdd", "库存盘点单", counted + (guarded(price("成本价", "pd_dj")), guarded(money("盈亏金额", "pd_zje"))), rows,
                   (NOTE_ROW,), signed, fields=stocktake)
    yield document("kcpdd2", "库存盘点单", counted, rows, (NOTE_ROW,), signed, fields=stocktake)

    rows = ((("仓库：[ckName]", 3), ("日期：[jhDate]", 2)),)
    change = {"sl": ("数量", "1"), "dj": ("成本价", "80"), "zje": ("金额", "80"), "note": ("备注", "镜腿断裂"),
              "gl_djh": ("单据编号", "BS21050310001")}
    note = remark("field.note", 40)
    yield document("bsby", "[title]", GOODS + (quantity("数量", "sl"), price("成本价", "dj"), money("金额", "zje"), note), rows,
                   ((("备注：[dNote]", 1, LONG),),), names, fields=change)
    yield document("bsby2", "[title]", GOODS + (quantity("数量", "sl"), replace(note, width=60)), rows,
                   ((("备注：[dNote]", 1, LONG),),), names, fields=change)

    parts = {"sl": ("数量", "1"), "dj": ("成本价", "80"), "zje": ("金额", "80"), "ck_name": ("仓库", "总店仓库"),
             "gl_djh": ("单据编号", "CF21050310001")}
    for stem, title, whole, part in (("cfd", "商品拆分单", "拆分商品", "拆分后商品"), ("kbd", "商品捆绑单", "捆绑商品", "组成商品")):
        figures = (("仓库：[ckName]", 4), ("日期：[jhDate]", 2), ("数量：[cfSl] [dwName]", 2))
        named = ((f"{whole}：[gSn] [gName] [ggName] [colorName]", 1),)  # a line of its own: names are long
        head = ((*figures, (f"金额：{shown('cfZje')}", 2)), named)
        plain = (figures, named)
        # Each part lies in a warehouse of its own.
        goods = (*(replace(c, caption=part) if c.caption == "商品名称" else c for c in GOODS), words("仓库", "ck_name", 22, True))
        yield document(stem, title, goods + (quantity("数量", "sl"), price("成本价", "dj"), money("金额", "zje")), head,
                       ((("备注：[cfNote]", 1, LONG),),), names, fields=parts)
        yield document(stem + "2", title, goods + (quantity("数量", "sl"),), plain, ((("备注：[cfNote]", 1, LONG),),), names, fields=parts)

    # Goods move by documents of their own where purchase and sale only count.
    moved = {"rk_sl": ("数量", "2"), "j_sn": ("采购单号", "CJ21050310001")}
    yield document("cgrk", "商品入库单", GOODS + (quantity("入库数量", "rk_sl", 20), words("采购单号", "j_sn", 32)),
                   ((("供货商：[ghsName]", 5), ("仓库：[ckName]", 3), ("日期：[jhDate]", 3)),), (NOTE_ROW,), names, fields=moved)
    moved = {"ck_sl": ("数量", "2"), "gl_djh2": ("销售单号", "XS21050310001")}
    yield document("spck", "商品出库单", GOODS + (quantity("出库数量", "ck_sl", 20), words("销售单号", "gl_djh2", 32)),
                   ((("客户：[khName]", 5), ("仓库：[ckName]", 3), ("日期：[jhDate]", 3)),), (NOTE_ROW,), names + ("客户签收：",), fields=moved)
    yield document("fyd", "发运单", GOODS + (quantity("数量", "ls_sl"), remark("ls_bz", 40)),
                   CUSTOMER_ROWS, ((("运费：" + shown("yunfei"), 1), ("包装费：" + shown("baozfei"), 1)), NOTE_ROW),
                   ("发货人：[uName]", "承运人：", "收货人签字："), fields=trade_fields("ls"))


def loan_documents():
    loan = {"sl": ("数量", "2"), "jh_sl": ("借货数量", "2"), "jh_dj": ("单价", "80"), "jh_zje": ("金额", "160"), "jh_hhsl": ("还货数量", "0"),
            "jh_xssl": ("转销售数量", "0"), "jh_yj": ("押金", "100"), "jh_ts": ("天数", "0"), "jh_zzj": ("租金", "0"),
            "gl_djh": ("单据编号", "JH21050310001"), "jh_rq": ("日期", "2021-05-03"), "kh_name": ("客户", "杭州视康眼科门诊部")}
    rows = ((("客户：[khName]", 5), ("联系人：[khLxr]", 2), ("电话：[khTele]", 3), ("日期：[jhDate]", 3)),
            (("地址：[khAddress]", 10), ("仓库：[ckName]", 3)))
    deposit = money("押金", "jh_yj", 18, hide_zero=True)
    for name, figures in (("khjh", (price("单价", "jh_dj"), money("金额", "jh_zje"))), ("khjh2", ())):
        yield document(name, "客户[djName]单", GOODS + (quantity("数量", "sl"), *figures, deposit), rows, (NOTE_ROW,),
                       ("经办人：[uName]", "制单：[aName]", "审核：[checker]", "客户签收："), fields=loan)
    yield list_report("khjhdjb", "客户借货登记表", (
        words("客户", "kh_name", 40, True), words("日期", "jh_rq", 22), words("单据编号", "gl_djh", 30), words("商品编号", "g_sn", 22),
        words("商品名称", "g_name", 45, True), quantity("借货", "jh_sl"), quantity("已还", "jh_hhsl"), quantity("转销售", "jh_xssl"),
        money("押金", "jh_yj")), fields=loan)
    yield list_report("khjhmxb", "客户借货明细表", (
        words("客户", "kh_name", 36, True), words("日期", "jh_rq", 22), words("单据编号", "gl_djh", 30), words("商品编号", "g_sn", 22),
        words("商品名称", "g_name", 45, True), words("规格型号", "gg_name", 22), words("单位", "dw_name", 10), quantity("数量", "jh_sl"),
        price("单价", "jh_dj"), money("金额", "jh_zje")), fields=loan)


# ---- money -----------------------------------------------------------------------------------------------------------

def slip(name, title, rows, names, paper=HALF, height=11):
    """A paper about one amount: captions at the left, values beside them, all framed."""
    items, y = [], 0.0
    for row in rows:
        whole, x = sum(share for _, _, share in row), 0.0
        for caption, content, share in row:
            part = round(paper.body * share / whole, 2)
            items.append(text(x, y, 28, height, caption, "center", 10.5, frame="all", pen_colour=INK, fill="#f2f4f7", background="yes"))
            lines = {"wrap": "yes"} if content == "[note]" else {}
            items.append(text(x + 28, y, part - 28, height, content, "", 11, frame="all", pen_colour=INK, padding_x=1.5, shrink="yes",
                              **lines))
            x += part
        y += height
    head = heading(paper, title, ((("日期：[rq]", 1), ("", 1)),), top_right="单据编号：[djh]", company_size=15, title_size=14,
                   kind="report-title")
    return Template(name, title, paper, [head, band("report-title", y + 2, items), signatures(paper, names)])


def money_papers():
    people = ("经办人：[uName]", "制单：[aName]", "审核：[checker]")
    for name, title, partner, balance, amount, sign in (
            ("ysyfysk", "应收款单", "客户", "应收余额", "应收金额", "客户签字："), ("ysyfyfk", "应付款单", "供货商", "应付余额", "应付金额", "供货商签字：")):
        yield slip(name, title, (
            ((partner, "[name]", 3), ("联系人", "[lxr]  [tele]", 2)),
            ((amount, shown("je"), 2), ("大写", "[yf]", 3)),
            ((balance, shown("ysyfje"), 2), ("备注", "[note]", 3))), people + (sign,))
    for name, title, partner, balance, account, sign in (
            ("ysyfskd", "收款单", "付款单位", "客户余额", "收款账户", "付款人："), ("ysyffkd", "付款单", "收款单位", "供货商余额", "付款账户", "收款人：")):
        yield slip(name, title, (
            ((partner, "[name]", 3), ("联系人", "[lxr]  [tele]", 2)),
            (("金额", shown("je"), 2), ("大写", "[yf]", 3)),
            ((account, "[fkfs]", 2), ("抹零", shown("mlje"), 1.5), (balance, shown("ysyfje"), 1.5)),
            (("备注", "[note]", 1),)), people + (sign,))
    for name, title, partner, verb, account, sign in (
            ("khsk", "单据收款单", "付款单位", "收", "收款账户", "付款人："), ("ghsfukuan", "单据付款单", "收款单位", "付", "付款账户", "收款人：")):
        yield slip(name, title, (
            ((partner, "[name]", 3), ("结算单据", "[djh2]", 2)),
            ((f"单据应{verb}", shown("djyf"), 1), (f"当时已{verb}", shown("djsf"), 1), (f"本单回款", shown("djhk"), 1), (f"尚余未{verb}", shown("djwf"), 1)),
            ((f"本次{verb}款", shown("je"), 2), ("大写", "[yf]", 3)),
            ((account, "[fkfs]", 2), ("往来余额", shown("ysyfje"), 3)),
            (("备注", "[note]", 1),)), people + (sign,))
    yield slip("xjyhd", "[title]", (
        (("账户", "[kmmc]", 1), ("入款账户", "[kmmc2]", 1)),
        (("金额", shown("je"), 2), ("大写", "[yf]", 3)),
        (("备注", "[note]", 1),)), ("经办人：[uName]", "制单：[aName]", "会计：", "签字："))
    yield slip("fysrd", "[title]", (
        (("类型", "[lx]", 1), ("部门", "[bm]", 1)),
        (("金额", shown("je"), 2), ("大写", "[yf]", 3)),
        (("账户", "[kmmc]", 1), ("备注", "[note]", 2))), ("经办人：[uName]", "制单：[aName]", "会计：", "签字："))


def money_lists():
    registered = {"gl_djh": ("单据号", "YS21050310001"), "k_rq": ("日期", "2021-05-03"), "k_djtxt": ("类型", "增加应收款"),
                  "k_fkfs": ("账户", "现金"), "k_yfje": ("应收(应付)", "1000"), "k_sfje": ("已收(已付)", "0"), "k_mlje": ("抹零", "0"),
                  "u_name": ("经办人", "王芳"), "k_note": ("备注", ""), "k_checker": ("审核人", "李明"), "k_ljje": ("余额", "1000"),
                  "k_qcje": ("期初", "0"), "gl_djh2": ("关联单据", ""), "a_name": ("操作员", "admin"), "name": ("往来单位", "视康眼科")}
    for name, title, partner, due, paid in (("ysksk", "应收收款登记表", "客户", "应收金额", "收款金额"),
                                            ("yfkfk", "应付付款登记表", "供货商", "应付金额", "付款金额")):
        yield list_report(name, title, (
            words("单据号", "gl_djh", 30), words("日期", "k_rq", 21), words(partner, "field.name", 42, True), words("类型", "k_djtxt", 24),
            money(due, "k_yfje", hide_zero=True), money(paid, "k_sfje", hide_zero=True), money("抹零", "k_mlje", 16, hide_zero=True),
            words("账户", "k_fkfs", 20), words("经办人", "u_name", 18), words("备注", "k_note", 36, True), words("审核人", "k_checker", 18)),
            fields=registered)
    for name, title, partner, start, due, paid, end in (
            ("yskmxb", "应收款明细表", "客户", "期初应收", "本期应收", "本期已收", "期末应收"),
            ("yfkmxb", "应付款明细表", "供货商", "期初应付", "本期应付", "本期已付", "期末应付")):
        yield list_report(name, title, (
            words(partner, "field.name", 42, True), words("日期", "k_rq", 21), words("单据号", "gl_djh", 30), words("类型", "k_djtxt", 26),
            money(start, "k_qcje", total=False, hide_zero=True), money(due, "k_yfje", hide_zero=True), money(paid, "k_sfje", hide_zero=True),
            money(end, "k_ljje", total=False), words("经办人", "u_name", 18), words("备注", "k_note", 40, True)), fields=registered)
    summed = {"k_ghskh": ("编号", "100001"), "name": ("往来单位", "视康眼科"), "qcje": ("期初", "0"), "yfje": ("本期应收", "1000"),
              "sfje": ("本期已收", "400"), "wfje": ("期末", "600")}
    for name, title, partner, start, due, paid, end in (
            ("yskglhzb", "应收款汇总表", "客户", "期初应收", "本期应收", "本期已收", "期末应收"),
            ("yfkglhzb", "应付款汇总表", "供货商", "期初应付", "本期应付", "本期已付", "期末应付")):
        yield list_report(name, title, (words(partner + "编号", "k_ghskh", 22), words(partner, "field.name", 50, True), money(start, "qcje", 26),
                                        money(due, "yfje", 26), money(paid, "sfje", 26), money(end, "wfje", 26)), A4, fields=summed)
    documents = {"djh": ("单据号", "XS21050310001"), "rq": ("日期", "2021-05-03"), "fktype": ("类型", "商品销售付款"), "zflx": ("类型", "进货支付"),
                 "yfje": ("应收", "1000"), "sfje": ("已收", "400"), "yhje": ("优惠", "0"), "hkje": ("回款", "0"), "wfje": ("未收", "600"),
                 "kh_name": ("客户", "视康眼科"), "ghs_name": ("供货商", "明视光学"), "u_name": ("经办人", "王芳"), "dnote": ("备注", "")}
    # Whoever must not see amounts gets no balance, which is not the same as none.
    ending = "[iif(sLjjeAll='','',format(val(sLjjeAll),'#,##0.00'))]"
    balance = (((f"期末余额：{ending}", 1), ("客户确认（签字盖章）：", 1)),)
    for name, partner, kind, due, paid in (("khdzd", "kh_name", "fktype", "应收", "已收"), ("ghsdzd", "ghs_name", "zflx", "应付", "已付")):
        yield list_report(name, "[bTitle]", (
            words("日期", "field.rq", 22), words("单据号", "field.djh", 31), words("客户" if name == "khdzd" else "供货商", partner, 34, True),
            words("类型", kind, 26), money(due + "金额", "yfje"), money(paid + "金额", "sfje"), money("优惠", "yhje", 16, hide_zero=True),
            money("回款", "hkje", hide_zero=True), money("未结金额", "wfje"), words("备注", "dnote", 34, True)), fields=documents,
            foot=balance if name == "khdzd" else ((balance[0][0], ("供货商确认（签字盖章）：", 1)),))
    goods = {"gl_kdrq": ("日期", "2021-05-03"), "gl_djh": ("单据号", "XS21050310001"), "gl_sl": ("数量", "2"), "gl_dj": ("单价", "120"),
             "gl_zje": ("金额", "240"), "ghs_name": ("往来单位", "视康眼科"), "ck_name": ("仓库", "总店仓库"), "u_name": ("经办人", "王芳")}
    lines = (words("日期", "gl_kdrq", 22), words("单据号", "gl_djh", 31), words("往来单位", "ghs_name", 36, True), words("商品编号", "g_sn", 20),
             words("商品名称", "g_name", 46, True), words("规格型号", "gg_name", 20), words("单位", "dw_name", 9), quantity("数量", "gl_sl"),
             price("单价", "gl_dj"), money("金额", "gl_zje"))
    yield list_report("khdzmxb", "客户对账明细表", lines, fields=goods)
    yield list_report("jthmxb", "进退货明细表", lines, fields=goods)
    yield list_report("xsthmxb", "销售退货明细表", lines, fields=goods)
    invoices = {"gl_djh": ("单据号", "XS21050310001"), "fp_rq": ("日期", "2021-05-03"), "fp_no": ("发票号码", "04412368"), "fp_yfje": ("应开", "1000"),
                "fp_kpje": ("已开", "400"), "fp_qcje": ("期初", "0"), "fp_ljje": ("期末", "600"), "fp_djtxt": ("类型", "商品销售单"),
                "fp_note": ("备注", ""), "name": ("往来单位", "视康眼科")}
    for name, title, caption in (("fpxsmxb", "销售发票明细表", "客户"), ("fpcgmxb", "进货发票明细表", "供货商")):
        yield list_report(name, title, (
            words(caption, "field.name", 42, True), words("日期", "fp_rq", 21), words("单据号", "gl_djh", 31), words("类型", "fp_djtxt", 24),
            words("发票号码", "fp_no", 24), money("期初", "fp_qcje", total=False, hide_zero=True), money("应开金额", "fp_yfje", hide_zero=True),
            money("已开金额", "fp_kpje", hide_zero=True), money("期末", "fp_ljje", total=False), words("备注", "fp_note", 30, True)), fields=invoices)


def stock_lists():
    stock = {"kcsl": ("当前库存", "12"), "kczsl": ("帐面库存", "12"), "cbjj": ("成本均价", "80"), "kczje": ("库存总值", "960"),
             "g_sj": ("预设售价", "168"), "xszje": ("售价总值", "2016"), "xssl": ("销售总数", "5")}
    yield list_report("kccx", "当前库存表", (
        words("商品编号", "g_sn", 22), words("商品名称", "g_name", 56, True), words("类别", "gc_name", 24, True), words("规格型号", "gg_name", 26),
        words("颜色", "color_name", 16), words("单位", "dw_name", 10, align="center"), quantity("当前库存", "kcsl", 20),
        quantity("帐面库存", "kczsl", 20), guarded(price("成本均价", "cbjj")), guarded(money("库存总值", "kczje", 24)),
        replace(price("预设售价", "g_sj"), content="[iif(seesPrice,g_sj,null)]"),
        replace(money("售价总值", "xszje", 24), content="[iif(seesPrice,xszje,null)]")),
        rows=((("仓库：[ckName]", 2), ("日期：[date1]  制表人：[aName]", 1)),), fields=stock)
    heading_of_period = ((("仓库：[ckName]", 1), ("日期：[date1] 至 [date2]", 1), ("制表人：[aName]", 1)),)
    sums_of_goods = {"gl_kc": ("上期结存", "10"), "gl_kczje": ("上期金额", "80"), "rksl": ("本期入库", "8"), "rkzje": ("入库金额", "105"),
                     "cksl": ("本期出库", "5"), "ckzje": ("出库金额", "100"), "glkc": ("期末存量", "13"), "glkczje": ("期末金额", "127.4")}
    yield list_report("jxctjhz", "进销存汇总表", (
        words("商品编号", "g_sn", 22), words("商品名称", "g_name", 50, True), words("规格型号", "gg_name", 22), words("颜色", "color_name", 12),
        words("单位", "dw_name", 9, align="center"), quantity("上期结存", "gl_kc"), guarded(money("上期金额", "gl_kczje")),
        quantity("本期入库", "rksl"), guarded(money("入库金额", "rkzje")), quantity("本期出库", "cksl"), guarded(money("出库金额", "ckzje")),
        quantity("期末存量", "glkc"), guarded(money("期末金额", "glkczje"))), rows=heading_of_period, fields=sums_of_goods)
    lines = {"gl_kdrq": ("日期", "2021-05-03"), "dnote": ("类型", "采购入库单"), "gl_djh": ("单据号", "CJ21050310001"),
             "rkdj": ("入库单价", "11"), "rksl": ("入库数量", "5"), "rkje": ("入库金额", "55"), "ckdj": ("出库单价", "0"),
             "cksl": ("出库数量", "0"), "ckje": ("出库金额", "0"), "ck_name": ("仓库", "总店仓库")}
    yield list_report("jxctjmx", "进销存明细表", (
        words("日期", "gl_kdrq", 31), words("类型", "dnote", 22), words("单据号", "gl_djh", 25), words("商品编号", "g_sn", 20),
        words("商品名称", "g_name", 44, True), words("规格型号", "gg_name", 18), guarded(price("入库单价", "rkdj", hide_zero=True)),
        quantity("入库数量", "rksl", hide_zero=True), guarded(money("入库金额", "rkje", hide_zero=True)),
        guarded(price("出库单价", "ckdj", hide_zero=True)), quantity("出库数量", "cksl", hide_zero=True),
        guarded(money("出库金额", "ckje", hide_zero=True)), words("仓库", "ck_name", 20)), rows=heading_of_period, fields=lines)


VARIABLES["seesCost"] = ("看得到成本", "1")
VARIABLES["seesPrice"] = ("看得到售价", "1")


def business_page():
    """The figures of a period, block by block; what the role must not see is null."""
    blocks = (
        ("采购", (("采购进货", "cg"), ("采购退货", "ct"), ("合计", "cghj"))),
        ("销售", (("商品销售", "xs"), ("顾客退货", "xt"), ("合计", "xshj"))),
        ("调拨和损溢", (("库存调拨", "db"), ("商品报损", "bs"), ("商品报溢", "by"))),
        ("供货商往来", (("向供货商付款", "fk"), ("应付供货商", "yf"), ("实付供货商", "sf"))),
        ("客户往来", (("向客户收款", "sk"), ("应收客户", "ys"), ("实收客户", "ss"))),
        ("财务", (("销售成本", "xscb"), ("销售毛利", "xslr"), ("毛利率(含税)", "lrl"))),
        ("库存（打印时）", (("现有库存", "kc"),)))
    without_documents = ("cghj", "xshj", "yf", "sf", "ys", "ss", "xscb", "xslr", "lrl", "kc")
    without_pieces = ("fk", "yf", "sf", "sk", "ys", "ss", "xscb", "xslr", "lrl")
    variables, rows = {}, []

    def shown_if_seen(name, label, form, unit=""):
        variables[name] = (label, "1200")
        return f"[iif({name} is null,'',format({name},'{form}') & '{unit}')]"

    for title, lines in blocks:
        rows.append(((title, 4, {"bold": "yes", "fill": "#f2f4f7", "background": "yes"}),
                     *((caption, share, {"bold": "yes", "align": "right", "fill": "#f2f4f7", "background": "yes"})
                       for caption, share in (("单据数", 2), ("数量", 3), ("金额", 4)))))
        for caption, name in lines:
            count = "" if name in without_documents else shown_if_seen(name + "ds", caption + "单数", "0")
            pieces = "" if name in without_pieces else shown_if_seen(name + "sl", caption + "数量", "0.##")
            amount = ("" if name == "db" else shown_if_seen(name, caption, "0.00", "%") if name == "lrl" else
                      shown_if_seen(name if name in ("xscb", "xslr") else name + "je", caption + "金额", "#,##0.00", "元"))
            right = {"align": "right"}
            rows.append(((caption, 4), (count, 2, right), (pieces, 3, right), (amount, 4, right)))
    below, end = cells(A4, rows)
    head = heading(A4, "营业分析", ((("日期：[date1] 至 [date2]  [ckName]", 2), ("制表人：[aName]", 1)),), company_size=15,
                   kind="report-title")
    foot = band("page-footer", 7, [text(0, 1.5, A4.body, 5, "打印时间：[format(now(),'yyyy-mm-dd hh:nn')]", size=8, colour="#555555")])
    return Template("yyfx", "营业分析", A4, [head, band("report-title", end, below), foot], {}, variables)


def price_labels():
    """Labels for the shelf, three beside each other and eight below on a sheet."""
    paper = Paper(210, 297, 9, 12.5, 9, 12.5, (("columns", 3), ("column-gap", 3), ("flow", "across")))
    width = (paper.width - 18 - 6) / 3
    goods = {"g_sj": ("售价", "168"), "g_lsj": ("零售价", "198"), "company": ("公司", "晴川公司")}
    items = [
        Item("shape", "", {"x": 0.5, "y": 0.5, "width": number(width - 1), "height": 32, "shape": "rounded", "pen-colour": "#999999",
                           "background": "yes"}),
        text(2, 1.5, width - 4, 5, "[company]", "center", 9, True, shrink="yes"),
        text(2, 6.5, width - 4, 5, "[g_name]", "", 9.5, True, shrink="yes"),
        text(2, 11.5, width - 4, 4, "规格：[gg_name]  [color_name]  产地：[g_sccs]", "", 7.5, shrink="yes"),
        Item("barcode", "[g_sptm]", {"x": 2, "y": 17, "width": 30, "height": 13.5, "symbology": "code128",
                                     "visible-if": "g_sptm<>''"}),
        text(33, 16.5, width - 35, 5, "零售价（元/[dw_name]）", "right", 7.5, shrink="yes"),
        text(33, 21.5, width - 35, 9.5, "￥[iif(g_lsj>0,g_lsj,g_sj)]", "right", 17, True, format="#,##0.00", shrink="yes"),
    ]
    return Template("goodsprice", "商品价签", paper, [band("master-data", 33.8, items)], goods)


# ---- rolls -----------------------------------------------------------------------------------------------------------

def roll_rule(paper, y):
    return Item("line", "", {"x": 0, "y": number(y), "width": number(paper.body), "height": 0, "pen-style": "dash"})


def till_slip(name, paper, size):
    """The slip of the till: two titles, the goods in two lines each, what was paid, the member, two footers."""
    w, fields = paper.body, {
        "pos_dj": ("单价", "128"), "pos_sl": ("数量", "1"), "pos_zje": ("金额", "128"), "pos_dzl": ("打折率", "1"), "zhdj": ("折后价", "128"),
        "gl_djh": ("单据号", "XS21050310001"), "pos_xsrq": ("时间", "2021-05-03 14:30:00")}
    price_part = w * 0.36
    head = [text(0, 0, w, 7, "[bt1]", "center", size + 4, True, shrink="yes"), text(0, 7, w, 5, "[bt2]", "center", size + 1, shrink="yes"),
            text(0, 13, w, 4.5, "单号：[djh]", size=size), text(0, 17.5, w, 4.5, "时间：[jhDate]", size=size),
            text(0, 22, w, 4.5, "收银：[aName]  营业员：[uName]", size=size, shrink="yes"), roll_rule(paper, 27.5),
            text(0, 28.5, w - price_part - 14, 4.5, "商品", size=size), text(w - price_part - 14, 28.5, 14, 4.5, "数量", "right", size),
            text(w - price_part, 28.5, price_part, 4.5, "金额", "right", size), roll_rule(paper, 34)]
    row = [text(0, 0, w, 4.5, "[g_name] [gg_name]", size=size, grow="yes"),
           text(0, 4.5, w - price_part - 14, 4.5, "单价 [pos_dj*pos_dzl]", size=size, format="0.00"),
           text(w - price_part - 14, 4.5, 14, 4.5, "[pos_sl]", "right", size),
           text(w - price_part, 4.5, price_part, 4.5, "[pos_zje]", "right", size, format="0.00")]
    last = [roll_rule(paper, 0.5), text(0, 1.5, w / 2, 5, "件数：[sum(pos_sl)]", size=size + 1),
            text(w / 2, 1.5, w / 2, 5, "合计：[sum(pos_zje)]", "right", size + 1, True, format="0.00"),
            text(0, 6.5, w, 4.5, "大写：[yf]", size=size, shrink="yes", visible_if="yf<>''"),
            text(0, 11, w, 4.5, "[fkfs1]", size=size, grow="yes"),
            text(0, 15.5, w, 4.5, "会员：[hyname]  卡号：[hybh]", size=size, shrink="yes", visible_if="hybh<>''"),
            text(0, 20, w, 4.5, "余额：[hyye]  积分：[hyjf]", size=size, shrink="yes", visible_if="hybh<>''"), roll_rule(paper, 25.5),
            text(0, 26.5, w, 4.5, "[jz1]", "center", size, grow="yes"), text(0, 31, w, 4.5, "[jz2]", "center", size, grow="yes")]
    return Template(name, "销售小票", paper, [band("report-title", 35, head), band("master-data", 9.5, row), band("summary", 38, last)], fields)


def shift_slip(name, paper, size):
    """What a cashier hands over at the end of a shift: one row of the shifts."""
    w = paper.body
    money_lines = (("现金", "jb_xjje"), ("储值卡", "jb_czkje"), ("银行卡", "jb_yhkje"), ("代金券", "jb_djqje"), ("微信", "jb_wxje"),
                   ("支付宝", "jb_zfbje"), ("抹零", "jb_mlje"), ("退货", "jb_thje"), ("入款", "jb_rkje"), ("出款", "jb_ckje"),
                   ("会员储值", "jb_xfje"), ("销售合计", "jb_xsje"), ("应交金额", "jb_yjje"), ("实交金额", "jb_sjje"))
    items = [text(0, 0, w, 6.5, "[comName]", "center", size + 3, True, shrink="yes"), text(0, 6.5, w, 6, "交班小票", "center", size + 2),
             text(0, 14, w, 4.8, "收银员：[a_name]", size=size), text(0, 18.8, w, 4.8, "开始：[jb_begintime]", size=size, shrink="yes"),
             text(0, 23.6, w, 4.8, "结束：[jb_endtime]", size=size, shrink="yes"), roll_rule(paper, 29.5)]
    y = 31
    for caption, name_of_field in money_lines:
        bold = name_of_field in ("jb_xsje", "jb_yjje", "jb_sjje")
        items.append(text(0, y, w / 2, 4.8, caption, size=size, bold=bold))
        items.append(text(w / 2, y, w / 2, 4.8, f"[{name_of_field}]", "right", size, bold, format="#,##0.00", shrink="yes"))
        y += 4.8
    items += [roll_rule(paper, y + 1), text(0, y + 2, w, 4.8, "备注：[jb_note]", size=size, grow="yes"),
              text(0, y + 8, w, 4.8, "交班人签字：", size=size), text(0, y + 18, w, 4.8, "接班人签字：", size=size)]
    fields = {name_of_field: (caption, "1200") for caption, name_of_field in money_lines}
    fields |= {"a_name": ("收银员", "王芳"), "jb_begintime": ("开始", "2021-05-03 08:30:00"), "jb_endtime": ("结束", "2021-05-03 17:30:00"),
               "jb_note": ("备注", "")}
    return Template(name, "交班小票", paper, [band("master-data", y + 26, items, new_page="yes")], fields)


def cashier_list(name, paper, size):
    """The sales of a cashier in a period, one line each."""
    w = paper.body
    head = [text(0, 0, w, 6.5, "[comName]", "center", size + 3, True, shrink="yes"), text(0, 6.5, w, 6, "收银明细", "center", size + 2),
            text(0, 13.5, w, 4.8, "日期：[date1] 至 [date2]", size=size, shrink="yes"), text(0, 18.3, w, 4.8, "收银员：[aName]", size=size),
            roll_rule(paper, 24)]
    row = [text(0, 0, w * 0.66, 4.8, "[gl_djh]", size=size, shrink="yes"),
           text(w * 0.66, 0, w * 0.34, 9, "[pos_sfje]", "right", size + 1, format="#,##0.00", shrink="yes"),
           text(0, 4.6, w * 0.66, 4.4, "[pos_xsrq]", size=size - 1, shrink="yes", colour="#555555")]
    last = [roll_rule(paper, 0.8), text(0, 2, w / 2, 5, "共 [count(gl_djh)] 笔", size=size + 1),
            text(w / 2, 2, w / 2, 5, "[sum(pos_sfje)]", "right", size + 1, True, format="#,##0.00", shrink="yes")]
    return Template(name, "收银明细", paper, [band("report-title", 25.5, head), band("master-data", 9.6, row), band("summary", 12, last)],
                    {"gl_djh": ("单据号", "XS21050310001"), "pos_xsrq": ("时间", "2021-05-03 14:30:00"), "pos_sfje": ("实收", "128")})


def member_slip():
    w, size = ROLL80.body, 10
    VARIABLES.update({"czje": ("储值金额", "'500.00'"), "zsje": ("赠送金额", "'50.00'")})
    rows = (("单号：[djh]", ""), ("时间：[jhDate]", ""), ("会员：[hyname]", ""), ("卡号：[hybh]", ""), ("储值金额：" + shown("czje"), "b"),
            ("赠送金额：" + shown("zsje"), ""), ("大写：[yf]", ""), ("储值余额：" + shown("hyye"), "b"), ("会员积分：[hyjf]", ""), ("收银：[aName]", ""))
    items = [text(0, 0, w, 7, "[comName]", "center", 14, True, shrink="yes"), text(0, 7, w, 6, "会员储值小票", "center", 12)]
    items += [text(0, 15 + i * 5, w, 5, content, size=size, bold=bool(b), shrink="yes") for i, (content, b) in enumerate(rows)]
    end = 15 + 5 * len(rows)
    items += [roll_rule(ROLL80, end + 1), text(0, end + 2, w, 5, "客户签字：", size=size),
              text(0, end + 14, w, 5, "谢谢惠顾，请保管好您的会员卡", "center", size)]
    return Template("hyxf", "会员储值小票", ROLL80, [band("report-title", end + 20, items)])


POS_FIELDS = {"pos_dj": ("单价", "128"), "pos_sl": ("数量", "1"), "pos_zje": ("金额", "128"), "pos_dzl": ("打折率", "1"),
              "zhdj": ("折后价", "128"), "gl_djh": ("单据号", "XS21050310001"), "pos_xsrq": ("时间", "2021-05-03 14:30:00")}


def pos_papers():
    yield till_slip("posxp", ROLL80, 9.5)
    yield till_slip("posxp58", ROLL58, 8)
    yield document("posxsd", "[sTitle]", GOODS + (quantity("数量", "pos_sl"), price("单价", "zhdj"), money("金额", "pos_zje")),
                   ((("会员：[hyname]", 2), ("卡号：[hybh]", 2), ("手机：[hymobile]", 2), ("时间：[pos_xsrq]", 3)),),
                   ((("金额大写：[yf]", 5), ("储值余额：[hyye]", 2), ("积分：[hyjf]", 2)),), ("收银：[aName]", "营业员：[uName]", "顾客签字："),
                   fields=POS_FIELDS, top_right="单据编号：[gl_djh]")

    # The order slip goes to the workshop: the prescription is what matters.
    paper = Paper(148, 210, 8, 8, 8, 8, (("landscape", "yes"),))
    w = paper.body
    grid = (("", "球镜 SPH", "柱镜 CYL", "轴向 AXIS", "矫正视力"), ("右眼 R", "[pos_qjy]", "[pos_zjy]", "[pos_zxy]", "[pos_jzsly]"),
            ("左眼 L", "[pos_qjz]", "[pos_zjz]", "[pos_zxz]", "[pos_jzslz]"))
    items = [text(0, 0, w, 8, "[bt1]", "center", 15, True, shrink="yes"), text(0, 8, w, 6.5, "配镜单", "center", 13, True),
             text(0, 15, w / 3, 5.5, "顾客：[pos_name]", size=10), text(w / 3, 15, w / 3, 5.5, "电话：[pos_tele]", size=10),
             text(2 * w / 3, 15, w / 3, 5.5, "取镜日期：[pos_qjrq]", size=10),
             text(0, 20.5, 2 * w / 3, 5.5, "单号：[djh]", size=10), text(2 * w / 3, 20.5, w / 3, 5.5, "卡号：[hybh]", size=10)]
    for r, row in enumerate(grid):
        for c, content in enumerate(row):
            items.append(text(c * w / 5, 27.5 + r * 8, w / 5, 8, content, "center", 11, r == 0 or c == 0, frame="all", pen_colour=INK,
                              shrink="yes", **({"fill": "#f2f4f7"} if r == 0 or c == 0 else {})))
    more = (("瞳距 PD：[pos_tj]", 1), ("下加光 ADD：[pos_add]", 1), ("瞳高：[pos_yt]", 1), ("备注：[pos_bz]", 2, {"wrap": "yes"}))
    below, end = cells(paper, (more,), 51.5, 7)
    columns = spread((RUNNING, words("商品名称", "g_name", 60, True), words("规格型号", "gg_name", 30), words("单位", "dw_name", 12),
                      quantity("数量", "pos_sl"), money("金额", "pos_zje")), w)
    yield Template("pospjd", "配镜单", paper, [
        band("report-title", end + 2, items + below), column_header(columns), detail(columns, 7), band("summary", 7, sums(columns)),
        signatures(paper, ("验光师：[pos_ygs]", "加工员：[pos_jgy]", "销售员：[pos_xsy]", "顾客签字："), left="[jz1]")], POS_FIELDS)
    yield member_slip()
    for suffix, paper, size in (("", ROLL80, 9.5), ("58", ROLL58, 8)):
        yield shift_slip("jbxp" + suffix, paper, size)
        yield cashier_list("possyymx" + suffix, paper, size)


def all_templates():
    yield from sale_documents()
    yield from purchase_documents()
    yield from stock_documents()
    yield from loan_documents()
    yield from money_papers()
    yield from money_lists()
    yield from stock_lists()
    yield business_page()
    yield price_labels()
    yield from pos_papers()


def main():
    check = sys.argv[1:] == ["--check"]
    REPORT.mkdir(exist_ok=True)
    faults = 0
    for template in all_templates():
        path = REPORT / f"{template.name}.fr3"
        content = template.xml()
        if check:
            if not path.exists() or path.read_text(encoding="utf-8") != content:
                print(f"{path.name}: not as described (run tools/report_templates.py)")
                faults += 1
        else:
            path.write_text(content, encoding="utf-8")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
