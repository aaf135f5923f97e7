# The Debian package of what is installed; ./package makes it.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME realtime-mode)
set(CPACK_PACKAGE_CONTACT "Real Time Mode maintainers <maintainers@realtime-mode.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "screen of a force and position monitoring instrument")
set(CPACK_PACKAGE_DESCRIPTION
"Shows samples of force, voltage and position while they arrive, on up to
three channels, and keeps them as captures. It holds the screen as a library,
a panel application with a simulated instrument, which is also a viewer of
captures, the tool rt3 for capture files, and what other hosts of the screen
are compiled with.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# What the libraries need is found in them; the rest is loaded by name.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
set(CPACK_DEBIAN_PACKAGE_DEPENDS fonts-liberation)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS qt6-qpa-plugins)
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "qt6-wayland, bash-completion, cmake, g++, libtbb-dev")

# The package's own documents. The date is that of the newest entry of the change log.
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS CHANGELOG.md)
file(STRINGS CHANGELOG.md entry REGEX "^## \\[" LIMIT_COUNT 1)
if(NOT entry MATCHES "^## \\[${PROJECT_VERSION}\\] - ([0-9-]+)$")
  message(FATAL_ERROR "CHANGELOG.md does not begin with version ${PROJECT_VERSION}: ${entry}")
endif()
execute_process(COMMAND date --utc --rfc-email --date=${CMAKE_MATCH_1} OUTPUT_VARIABLE date
                OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
set(documents ${CMAKE_BINARY_DIR}/documents)
file(WRITE ${documents}/changelog
"${CPACK_PACKAGE_NAME} (${PROJECT_VERSION}) stable; urgency=medium

  * Version ${PROJECT_VERSION}; CHANGELOG.md says what is in it.

 -- ${CPACK_PACKAGE_CONTACT}  ${date}
")
execute_process(COMMAND gzip -9nf ${documents}/changelog COMMAND_ERROR_IS_FATAL ANY)
file(COPY packaging/copyright DESTINATION ${documents})
set(CPACK_INSTALLED_DIRECTORIES ${documents} usr/share/doc/${CPACK_PACKAGE_NAME})

include(CPack)
