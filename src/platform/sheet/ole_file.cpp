#include "platform/sheet/ole_file.h"

#include <gsf/gsf-infile-msole.h>
#include <gsf/gsf-infile.h>
#include <gsf/gsf-input-stdio.h>
#include <gsf/gsf-outfile-msole.h>
#include <gsf/gsf-outfile.h>
#include <gsf/gsf-output-memory.h>
#include <gsf/gsf-utils.h>
#include <memory>

namespace jxc {
namespace ole_file_detail {

struct Unref {
  void operator()(void* object) const { g_object_unref(object); }
};
template <class T>
using Ref = std::unique_ptr<T, Unref>;

void initialise() {
  static const bool done = [] {
    gsf_init();
    // What is wrong with a damaged file is told to the operator in our words; the library's go to nobody.
    g_log_set_handler(
        "libgsf:msole", static_cast<GLogLevelFlags>(G_LOG_LEVEL_MASK | G_LOG_FLAG_FATAL | G_LOG_FLAG_RECURSION),
        [](const char*, GLogLevelFlags, const char*, void*) {}, nullptr);
    g_log_set_handler(
        nullptr, G_LOG_LEVEL_WARNING, [](const char*, GLogLevelFlags, const char*, void*) {}, nullptr);
    return true;
  }();
  static_cast<void>(done);
}

}  // namespace ole_file_detail

std::string oleFile(const char* streamName, const std::string& content) {
  using namespace ole_file_detail;
  initialise();
  const Ref<GsfOutput> memory(gsf_output_memory_new());
  {
    const Ref<GsfOutfile> container(gsf_outfile_msole_new(memory.get()));
    if (!container) return {};
    const Ref<GsfOutput> stream(gsf_outfile_new_child(container.get(), streamName, FALSE));
    const bool written =
        stream && gsf_output_write(stream.get(), content.size(), reinterpret_cast<const guint8*>(content.data()));
    const bool closed = stream && gsf_output_close(stream.get());
    if (!gsf_output_close(GSF_OUTPUT(container.get())) || !written || !closed) return {};
  }
  const auto* bytes = gsf_output_memory_get_bytes(GSF_OUTPUT_MEMORY(memory.get()));
  return {reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(gsf_output_size(memory.get()))};
}

std::string oleStream(const char* path, const char* streamName) {
  using namespace ole_file_detail;
  initialise();
  const Ref<GsfInput> file(gsf_input_stdio_new(path, nullptr));
  if (!file) return {};
  const Ref<GsfInfile> container(gsf_infile_msole_new(file.get(), nullptr));
  if (!container) return {};
  const Ref<GsfInput> stream(gsf_infile_child_by_name(container.get(), streamName));
  if (!stream) return {};
  const auto size = static_cast<std::size_t>(gsf_input_size(stream.get()));
  if (size > static_cast<std::size_t>(gsf_input_size(file.get()))) return {};  // a chain that leads in circles
  std::string content(size, '\0');
  if (size == 0 || !gsf_input_read(stream.get(), size, reinterpret_cast<guint8*>(content.data()))) return {};
  return content;
}

std::vector<std::string> oleStreamNames(const char* path) {
  using namespace ole_file_detail;
  initialise();
  const Ref<GsfInput> file(gsf_input_stdio_new(path, nullptr));
  if (!file) return {};
  const Ref<GsfInfile> container(gsf_infile_msole_new(file.get(), nullptr));
  if (!container) return {};
  std::vector<std::string> names;
  for (int i = 0; i < gsf_infile_num_children(container.get()); ++i) {
    if (const char* name = gsf_infile_name_by_index(container.get(), i)) names.emplace_back(name);
  }
  return names;
}

}  // namespace jxc
