// 模板属性: the attributes of the file, said once for reading and writing. Only template_file.cpp includes this.
#pragma once

#include "platform/report/template.h"

namespace jxc::report::template_attributes {

constexpr double kLongest = 5000;  // millimetres; nothing on paper is longer

// `io` is a reader, or a writer that leaves out what is as in `d`, a fresh value.

template <class Io>
void describe(Io& io, PageSetup& v, const PageSetup& d) {
  io.number("width", v.width, 210, 10, kLongest);  // always written: the first thing that a reader looks for
  io.number("height", v.height, 297, 10, kLongest);
  io.flag("landscape", v.landscape, d.landscape);
  io.number("left", v.left, d.left, 0, 1000);
  io.number("top", v.top, d.top, 0, 1000);
  io.number("right", v.right, d.right, 0, 1000);
  io.number("bottom", v.bottom, d.bottom, 0, 1000);
  io.flag("roll", v.roll, d.roll);
  io.flag("preprinted", v.preprinted, d.preprinted);
  io.whole("columns", v.columns, d.columns, 1, 50);
  io.number("column-gap", v.columnGap, d.columnGap, 0, 1000);
  io.choice("flow", v.flow, d.flow, {u"down", u"across"});
}

template <class Io>
void describe(Io& io, Variable& v, const Variable& d) {
  io.text("name", v.name, d.name);
  io.text("label", v.label, d.label);
  io.text("value", v.value, d.value);
  io.text("sample", v.sample, d.sample);
}

template <class Io>
void describe(Io& io, DetailField& v, const DetailField& d) {
  io.text("name", v.name, d.name);
  io.text("label", v.label, d.label);
  io.text("sample", v.sample, d.sample);
}

template <class Io>
void describe(Io& io, Group& v, const Group& d) {
  io.text("by", v.by, d.by);
  io.flag("new-page", v.newPage, d.newPage);
  io.flag("keep-together", v.keepTogether, d.keepTogether);
  io.flag("repeat-header", v.repeatHeader, d.repeatHeader);
}

template <class Io>
void describe(Io& io, Band& v, const Band& d) {
  io.number("height", v.height, d.height, 0, kLongest);
  io.whole("group", v.group, d.group, 0, 7);
  io.text("visible-if", v.visibleIf, d.visibleIf);
  io.flag("new-page", v.newPage, d.newPage);
  io.flag("splits", v.splits, d.splits);
  io.flag("at-bottom", v.atBottom, d.atBottom);
  io.flag("on-first-page", v.onFirstPage, d.onFirstPage);
  io.flag("on-last-page", v.onLastPage, d.onLastPage);
  io.colour("fill", v.fill, d.fill);
  io.colour("alternate-fill", v.alternateFill, d.alternateFill);
}

template <class Io>
void describe(Io& io, Item& v, const Item& d) {
  io.text("name", v.name, d.name);
  io.number("x", v.x, d.x, -kLongest, kLongest);
  io.number("y", v.y, d.y, -kLongest, kLongest);
  io.number("width", v.width, d.width, 0, kLongest);
  io.number("height", v.height, d.height, 0, kLongest);
  io.text("visible-if", v.visibleIf, d.visibleIf);
  io.flag("background", v.background, d.background);
  io.flag("follow-height", v.followHeight, d.followHeight);

  io.text("font", v.font.family, d.font.family);
  io.number("size", v.font.size, d.font.size, 1, 500);
  io.flag("bold", v.font.bold, d.font.bold);
  io.flag("italic", v.font.italic, d.font.italic);
  io.flag("underline", v.font.underline, d.font.underline);
  io.flag("strike-out", v.font.strikeOut, d.font.strikeOut);
  io.colour("colour", v.font.colour, d.font.colour);
  io.choice("align", v.align, d.align, {u"left", u"center", u"right", u"spread"});
  io.choice("valign", v.valign, d.valign, {u"top", u"center", u"bottom"});
  io.flag("wrap", v.wrap, d.wrap);
  io.flag("shrink", v.shrink, d.shrink);
  io.flag("grow", v.grow, d.grow);
  io.number("line-spacing", v.lineSpacing, d.lineSpacing, 0.5, 10);
  io.number("padding-x", v.paddingX, d.paddingX, 0, 100);
  io.number("padding-y", v.paddingY, d.paddingY, 0, 100);
  io.whole("rotation", v.rotation, d.rotation, 0, 270);
  io.text("format", v.format, d.format);
  io.flag("hide-zero", v.hideZero, d.hideZero);
  io.flag("hide-repeated", v.hideRepeated, d.hideRepeated);

  io.sides("frame", v.frame, d.frame);
  io.number("pen", v.pen.width, d.pen.width, 0, 20);
  io.choice("pen-style", v.pen.style, d.pen.style, {u"solid", u"dash", u"dot", u"double"});
  io.colour("pen-colour", v.pen.colour, d.pen.colour);
  io.colour("fill", v.fill, d.fill);
  io.choice("shape", v.shape, d.shape, {u"rectangle", u"rounded", u"ellipse", u"triangle", u"diamond"});
  io.flag("rising", v.rising, d.rising);
  io.choice("fit", v.fit, d.fit, {u"inside", u"stretch", u"original"});
  io.symbology("symbology", v.symbology, d.symbology);
  io.flag("show-code", v.showCode, d.showCode);
  io.whole("correction", v.correction, d.correction, 1, 4);
}

}  // namespace jxc::report::template_attributes
