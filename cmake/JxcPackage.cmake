# Installing, and a Debian package: tools/package.sh
# An installed program keeps its data in a folder of the user, see findProgramDirectory.
include(GNUInstallDirs)
foreach(program jxc jxcctl)
  if(TARGET ${program})
    install(TARGETS ${program} RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")
  endif()
endforeach()
install(FILES packaging/jxc.desktop DESTINATION "${CMAKE_INSTALL_DATADIR}/applications")
install(FILES packaging/jxc.svg DESTINATION "${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps")
# What a shop reads, prints by and looks at; it may have its own of each in its program directory.
foreach(supplied skinfiles report readme 模板文件)
  install(DIRECTORY "${CMAKE_SOURCE_DIR}/${supplied}" DESTINATION "${CMAKE_INSTALL_DATADIR}/jxc" OPTIONAL
    FILES_MATCHING PATTERN "*.skinres" PATTERN "*.fr3" PATTERN "*.png" PATTERN "*.xlsx")
endforeach()
install(FILES readme.htm DESTINATION "${CMAKE_INSTALL_DATADIR}/jxc")
install(FILES LICENSE DESTINATION "${CMAKE_INSTALL_DOCDIR}" RENAME copyright)

set(CPACK_PACKAGE_NAME jxc)
set(CPACK_PACKAGE_CONTACT "the jxc contributors <jxc@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "purchase, sale and stock of an optical shop (进销存)")
set(CPACK_GENERATOR DEB)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
# What no program links, but the windows need: Chinese texts of Qt, a Chinese font, what Qt's camera stands on.
set(CPACK_DEBIAN_PACKAGE_DEPENDS
  "fonts-wqy-microhei | fonts-noto-cjk, qt6-translations-l10n, gstreamer1.0-plugins-base")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-qpa-plugins, gstreamer1.0-plugins-good, ca-certificates")
include(CPack)
