# The Debian packages: the program, the protocol library's shared form, and what builds against the library. The presets
# that make them install below /usr.
set(ORVANE_HOME lib/orvane)  # the program's own folder, in which it looks for the session program
set(ORVANE_ID example.orvane.Connector)
set(ORVANE_PROGRAM /usr/${ORVANE_HOME}/orvane)
set(data ${PROJECT_SOURCE_DIR}/data)

install(TARGETS orvane RUNTIME DESTINATION ${ORVANE_HOME} COMPONENT orvane)
install(DIRECTORY DESTINATION bin COMPONENT orvane)
install(CODE "file(CREATE_LINK ../${ORVANE_HOME}/orvane \$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/bin/orvane SYMBOLIC)"
  COMPONENT orvane)
# Where the package of a session program puts a link to it.
install(FILES ${data}/package/README.session-program COMPONENT orvane
  DESTINATION "${ORVANE_HOME}/Orvane Connection.app/Contents/MacOS" RENAME README)

install(FILES ${data}/desktop/${ORVANE_ID}.desktop DESTINATION share/applications COMPONENT orvane)
install(FILES ${data}/desktop/${ORVANE_ID}.metainfo.xml DESTINATION share/metainfo COMPONENT orvane)
install(FILES ${data}/desktop/${ORVANE_ID}.mime.xml DESTINATION share/mime/packages RENAME ${ORVANE_ID}.xml
  COMPONENT orvane)
configure_file(${data}/desktop/${ORVANE_ID}.service.in ${PROJECT_BINARY_DIR}/package/${ORVANE_ID}.service @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/package/${ORVANE_ID}.service DESTINATION share/dbus-1/services COMPONENT orvane)
install(DIRECTORY ${data}/icons/hicolor DESTINATION share/icons COMPONENT orvane)

# orvane_compressed(SOURCE DESTINATION NAME COMPONENT): a text that Debian wants compressed, always to the same bytes.
function(orvane_compressed source destination name component)
  set(compressed ${PROJECT_BINARY_DIR}/package/${component}/${name}.gz)
  file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/package/${component})
  configure_file(${source} ${PROJECT_BINARY_DIR}/package/${component}/${name} @ONLY)
  add_custom_command(OUTPUT ${compressed}
    COMMAND gzip -9nkf ${PROJECT_BINARY_DIR}/package/${component}/${name}
    DEPENDS ${PROJECT_BINARY_DIR}/package/${component}/${name} VERBATIM)
  add_custom_target(compressed-${component}-${name} ALL DEPENDS ${compressed})
  install(FILES ${compressed} DESTINATION ${destination} COMPONENT ${component})
endfunction()
orvane_compressed(${data}/package/orvane.1 share/man/man1 orvane.1 orvane)


set(CPACK_DEBIAN_ORVANE_PACKAGE_NAME orvane)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME liborvane-sdk${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_DEV_PACKAGE_NAME liborvane-sdk-dev)
foreach(component orvane runtime dev)
  string(TOUPPER ${component} upper)
  set(ORVANE_PACKAGE ${CPACK_DEBIAN_${upper}_PACKAGE_NAME})
  orvane_compressed(${data}/package/changelog share/doc/${ORVANE_PACKAGE} changelog ${component})
  install(FILES ${data}/package/copyright DESTINATION share/doc/${ORVANE_PACKAGE} COMPONENT ${component})
endforeach()

set(CPACK_GENERATOR DEB)
set(CPACK_COMPONENTS_ALL orvane runtime dev)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_CONTACT "The Orvane developers <packages@orvane.example>")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE https://orvane.example)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/SDK)

set(CPACK_DEBIAN_ORVANE_PACKAGE_SECTION net)
# Loaded as plug-ins, or run: no library of theirs is linked.
set(CPACK_DEBIAN_ORVANE_PACKAGE_DEPENDS "libqt6svg6, xdg-utils")
set(CPACK_DEBIAN_ORVANE_PACKAGE_RECOMMENDS "dbus-user-session | dbus-x11, gnome-keyring | org.freedesktop.secrets, libglib2.0-bin")
set(CPACK_DEBIAN_ORVANE_DESCRIPTION "connector for published applications and desktops
 Finds the applications and desktops that an organisation publishes through a
 connection broker, by e-mail address, web address or link, and starts them
 in a session program, which is a package of its own.")

set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${data}/package/triggers)
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "connection broker protocol library
 Conversation with connection brokers, launch files, farm configurations,
 links and the registry of running sessions.")

set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS
  "liborvane-sdk${PROJECT_VERSION_MAJOR} (= ${PROJECT_VERSION}), libb64-dev, libcurl4-openssl-dev, libpng-dev, libpugixml-dev")
set(CPACK_DEBIAN_DEV_DESCRIPTION "connection broker protocol library, development files
 Headers, static library, CMake package and pkg-config file of the protocol
 library that connectors and session programs are built with.")
include(CPack)
