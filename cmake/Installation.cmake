# What `cmake --install` puts where. Programs find the rest from their own place, so that an
# installation works wherever it is put or moved.
set(shared_dir ${CMAKE_INSTALL_DATADIR}/realtime-mode)
set(header_dir ${CMAKE_INSTALL_INCLUDEDIR}/realtime-mode)
set(config_dir ${CMAKE_INSTALL_LIBDIR}/cmake/RealTimeMode)

set(programs rtpanel rtinstrument rt3)
set(rooms system drawing windows operator)
set(loaded_by_name RealTimeMode OnscreenKeyboard BitmapRes)

file(RELATIVE_PATH to_libraries ${CMAKE_INSTALL_FULL_BINDIR} ${RT_FULL_LIBRARY_DIR})
set_target_properties(${programs} PROPERTIES INSTALL_RPATH "$ORIGIN/${to_libraries}")
set_target_properties(${rooms} ${loaded_by_name} PROPERTIES INSTALL_RPATH "$ORIGIN")

install(TARGETS ${programs})
install(TARGETS ${loaded_by_name} LIBRARY DESTINATION ${RT_LIBRARY_DIR})
install(DIRECTORY lang DESTINATION ${shared_dir})
install(DIRECTORY samples DESTINATION ${shared_dir} OPTIONAL)

# For hosts: the headers that they include, and all that those include.
install(TARGETS ${rooms} EXPORT RealTimeMode
        LIBRARY DESTINATION ${RT_LIBRARY_DIR}
        INCLUDES DESTINATION ${header_dir})
install(EXPORT RealTimeMode NAMESPACE RealTimeMode:: FILE RealTimeModeTargets.cmake
        DESTINATION ${config_dir})
include(CMakePackageConfigHelpers)
write_basic_package_version_file(RealTimeModeConfigVersion.cmake COMPATIBILITY ExactVersion)
install(FILES packaging/RealTimeModeConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/RealTimeModeConfigVersion.cmake
        DESTINATION ${config_dir})

set(headers
  acquisition/ObjRTGeneric.h
  acquisition/RTPacket.h
  platform/operator/Operator.h
  platform/system/DynamicLibrary.h
  platform/system/Installation.h
  platform/system/Paths.h
  platform/windows/Application.h
  plugin/DlgBase.h
  plugin/RealTimeData.h
  plugin/ScreenTemplate.h)
set(unread ${headers})
while(unread)
  list(POP_FRONT unread header)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${header})
  file(STRINGS ${header} lines REGEX "^#include \"")
  list(TRANSFORM lines REPLACE "^#include \"([^\"]+)\".*" "\\1")
  list(REMOVE_ITEM lines ${headers})
  list(APPEND headers ${lines})
  list(APPEND unread ${lines})
endwhile()
foreach(header ${headers})
  get_filename_component(folder ${header} DIRECTORY)
  install(FILES ${header} DESTINATION ${header_dir}/${folder})
endforeach()

# A manual page's options are those that the program's help lists.
foreach(program ${programs})
  set(page ${CMAKE_CURRENT_BINARY_DIR}/${program}.1)
  add_custom_command(
    OUTPUT ${page} ${page}.gz
    COMMAND ${CMAKE_COMMAND} -DPROGRAM=$<TARGET_FILE:${program}> -DVERSION=${PROJECT_VERSION}
            -DSOURCE=${CMAKE_CURRENT_SOURCE_DIR}/packaging/man/${program}.1.in -DPAGE=${page}
            -P ${CMAKE_CURRENT_SOURCE_DIR}/cmake/ManualPage.cmake
    COMMAND gzip -9nkf ${page}
    DEPENDS ${program} cmake/ManualPage.cmake packaging/man/${program}.1.in
    VERBATIM)
  list(APPEND pages ${page}.gz)
  install(FILES packaging/completion/${program}
          DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
endforeach()
add_custom_target(manual ALL DEPENDS ${pages})
install(FILES ${pages} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)

install(FILES packaging/rtpanel.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES packaging/realtime-mode.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages)
install(FILES packaging/realtime-mode.svg
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
install(FILES CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/realtime-mode)

# All that is installed.
add_custom_target(product DEPENDS ${programs} ${rooms} ${loaded_by_name} languages manual)
