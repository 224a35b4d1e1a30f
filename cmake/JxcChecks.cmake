# Checks of the tree beside the tests, so that one summary tells everything: layout, module borders, templates, clang-tidy.
find_package(Python3 REQUIRED COMPONENTS Interpreter)
find_program(JXC_CLANG_FORMAT clang-format-14)
find_program(JXC_CLANG_TIDY clang-tidy-14)

add_test(NAME check.tree COMMAND Python3::Interpreter "${CMAKE_SOURCE_DIR}/tools/check_tree.py")
add_test(NAME check.templates COMMAND Python3::Interpreter "${CMAKE_SOURCE_DIR}/tools/report_templates.py" --check)

# A machine that only builds need not have these two; ./test installs them.
if(JXC_CLANG_FORMAT)
  add_test(NAME check.format COMMAND "${CMAKE_SOURCE_DIR}/tools/check_format.sh" "${JXC_CLANG_FORMAT}")
endif()
if(JXC_CLANG_TIDY AND JXC_UNITY AND NOT JXC_SANITIZE)
  add_test(NAME check.tidy COMMAND Python3::Interpreter "${CMAKE_SOURCE_DIR}/tools/check_tidy.py" "${CMAKE_BINARY_DIR}")
  set_tests_properties(check.tidy PROPERTIES PROCESSORS 2 TIMEOUT 1200 COST 1000)
endif()
