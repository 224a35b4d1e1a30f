#include "ui/known_parts.h"

#include <algorithm>
#include <stdexcept>
#include <string>
#include <vector>

namespace jxc::ui {
namespace known_parts_detail {

std::vector<std::string_view> partsOf(const ScreenSpec& spec) {
  std::vector<std::string_view> names;
  for (const FieldSpec& field : spec.fields)
    names.push_back(field.name);
  for (const GridSpec& grid : spec.grids)
    names.push_back(grid.name);
  for (const CommandSpec& command : spec.commands)
    names.push_back(command.name);
  return names;
}

[[noreturn]] void refuse(const ScreenSpec& spec, std::string_view name, const char* why) {
  throw std::invalid_argument(std::string(spec.name) + ": \"" + std::string(name) + "\" " + why);
}

}  // namespace known_parts_detail

void refuseUnknownParts(const ScreenSpec& spec, std::initializer_list<std::span<const std::string_view>> known,
                        std::span<const std::string_view> own) {
  using namespace known_parts_detail;
  const std::vector<std::string_view> parts = partsOf(spec);
  const auto stands = [](std::span<const std::string_view> names, std::string_view name) {
    return std::ranges::find(names, name) != names.end();
  };
  for (const std::string_view name : parts)
    if (!stands(own, name) && std::ranges::none_of(known, [&](const auto& names) { return stands(names, name); }))
      refuse(spec, name, "is no part that this kind of screen knows");
  for (const std::string_view name : own)
    if (!stands(parts, name)) refuse(spec, name, "is said to be its own, and is not described");
}

}  // namespace jxc::ui
