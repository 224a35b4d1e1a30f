#include "harness/sheets_by_python.h"

#include <QJsonDocument>
#include <QProcess>

#include <gtest/gtest.h>

namespace jxc::test {

QJsonObject readByPython(const QStringList& files) {
  static const char kScript[] = R"(
import datetime, json, sys

def xlsx(path):
    import openpyxl
    def cell(c):
        v = c.value
        if v is None: return ''
        if isinstance(v, datetime.datetime): return 'd:' + str(v).replace(' 00:00:00', '')
        if isinstance(v, (int, float)): return 'n:%.15g' % v
        return c.data_type + ':' + v
    for s in openpyxl.load_workbook(path).worksheets:
        yield s.title, {
            'rows': [[cell(c) for c in row] for row in s.iter_rows()],
            'formats': [c.number_format for c in s[2]],
            'bold': [bool(c.font.b) for row in (s[1], s[2]) for c in row],
            'freeze': s.freeze_panes,
            'widths': [s.column_dimensions[k].width for k in sorted(s.column_dimensions)]}

def xls(path):
    import xlrd
    book = xlrd.open_workbook(path, formatting_info=True)
    def look(s, row):
        return [book.xf_list[s.cell_xf_index(row, c)] for c in range(s.ncols)]
    def cell(c):
        if c.ctype == xlrd.XL_CELL_DATE:
            return 'd:' + str(xlrd.xldate_as_datetime(c.value, book.datemode)).replace(' 00:00:00', '')
        return ('' if c.ctype == xlrd.XL_CELL_EMPTY else 'n:%.15g' % c.value if c.ctype == xlrd.XL_CELL_NUMBER
                else 's:' + c.value)
    for s in book.sheets():
        yield s.name, {
            'rows': [[cell(c) for c in s.row(r)] for r in range(s.nrows)],
            'formats': [book.format_map[x.format_key].format_str for x in look(s, 1)],
            'bold': [bool(book.font_list[x.font_index].bold) for r in (0, 1) for x in look(s, r)],
            'freeze': 'A2' if s.panes_are_frozen and s.horz_split_pos == 1 else '',
            'widths': [s.colinfo_map[c].width / 256 for c in range(s.ncols)]}

print(json.dumps({p: dict((xls if p.endswith('.xls') else xlsx)(p)) for p in sys.argv[1:]}))
)";
  QProcess python;
  python.start(u"/usr/bin/python3"_qs, QStringList{u"-c"_qs, QString::fromUtf8(kScript)} + files);
  python.waitForFinished(120000);
  EXPECT_EQ(python.exitCode(), 0) << python.readAllStandardError().toStdString();
  return QJsonDocument::fromJson(python.readAllStandardOutput()).object();
}

QJsonObject readByPython(const QString& file) {
  return readByPython(QStringList(file))[file].toObject();
}

}  // namespace jxc::test
