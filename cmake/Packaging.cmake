# What is installed of the program, and the Debian packages (cmake/build-packages.sh): the program, the protocol library's
# shared form, and what builds against the library. The release preset, which makes them, installs below /usr.
set(ORVANE_HOME lib/orvane)  # the program's own folder, in which it looks for the session program
set(ORVANE_ID example.orvane.Connector)
set(ORVANE_PROGRAM ${CMAKE_INSTALL_PREFIX}/${ORVANE_HOME}/orvane)
set(data ${PROJECT_SOURCE_DIR}/data)
set(generated ${PROJECT_BINARY_DIR}/package)

install(TARGETS orvane RUNTIME DESTINATION ${ORVANE_HOME} COMPONENT orvane)
install(DIRECTORY DESTINATION bin COMPONENT orvane)
install(CODE "file(CREATE_LINK ../${ORVANE_HOME}/orvane \$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/bin/orvane SYMBOLIC)"
  COMPONENT orvane)
# Where the package of a session program puts a link to it.
install(DIRECTORY DESTINATION "${ORVANE_HOME}/Orvane Connection.app/Contents/MacOS" COMPONENT orvane)

install(FILES ${data}/desktop/${ORVANE_ID}.desktop DESTINATION share/applications COMPONENT orvane)
install(FILES ${data}/desktop/${ORVANE_ID}.metainfo.xml DESTINATION share/metainfo COMPONENT orvane)
install(FILES ${data}/desktop/${ORVANE_ID}.mime.xml DESTINATION share/mime/packages RENAME ${ORVANE_ID}.xml
  COMPONENT orvane)
configure_file(${data}/desktop/${ORVANE_ID}.service.in ${generated}/${ORVANE_ID}.service @ONLY)
install(FILES ${generated}/${ORVANE_ID}.service DESTINATION share/dbus-1/services COMPONENT orvane)

set(package_files)  # all that is made for the packages at build time

# Icons: drawings, and for desktops that show no drawings, pictures in the usual sizes.
install(DIRECTORY ${data}/icons/hicolor DESTINATION share/icons COMPONENT orvane)
foreach(icon apps/${ORVANE_ID} mimetypes/application-x-orvane-launch)
  set(drawing ${data}/icons/hicolor/scalable/${icon}.svg)
  cmake_path(GET icon PARENT_PATH context)
  set(pictures)
  set(arguments)
  foreach(size 16 22 24 32 48 64 128 256)
    set(picture ${generated}/icons/${size}/${icon}.png)
    file(MAKE_DIRECTORY ${generated}/icons/${size}/${context})
    list(APPEND pictures ${picture})
    list(APPEND arguments ${size} ${picture})
    install(FILES ${picture} DESTINATION share/icons/hicolor/${size}x${size}/${context} COMPONENT orvane)
  endforeach()
  add_custom_command(OUTPUT ${pictures} COMMAND svg-to-png ${drawing} ${arguments} DEPENDS svg-to-png ${drawing} VERBATIM)
  list(APPEND package_files ${pictures})
endforeach()

# Texts that Debian wants compressed, always to the same bytes.
foreach(text changelog orvane.1)
  configure_file(${data}/package/${text} ${generated}/${text} @ONLY)
  add_custom_command(OUTPUT ${generated}/${text}.gz COMMAND gzip -9nkf ${generated}/${text} DEPENDS ${generated}/${text}
    VERBATIM)
  list(APPEND package_files ${generated}/${text}.gz)
endforeach()
install(FILES ${generated}/orvane.1.gz DESTINATION share/man/man1 COMPONENT orvane)

add_custom_target(package-files ALL DEPENDS ${package_files})

set(CPACK_DEBIAN_ORVANE_PACKAGE_NAME orvane)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME liborvane-sdk${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_DEV_PACKAGE_NAME liborvane-sdk-dev)
foreach(component orvane runtime dev)
  string(TOUPPER ${component} upper)
  set(documentation share/doc/${CPACK_DEBIAN_${upper}_PACKAGE_NAME})
  install(FILES ${generated}/changelog.gz ${data}/package/copyright DESTINATION ${documentation} COMPONENT ${component})
endforeach()

set(CPACK_GENERATOR DEB)
set(CPACK_COMPONENTS_ALL orvane runtime dev)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_CONTACT "The Orvane developers <packages@orvane.example>")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")  # each package has its own
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_POST_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/drop-ldconfig-scripts.cmake)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_SOURCE orvane)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE https://orvane.example)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/SDK)

set(CPACK_DEBIAN_ORVANE_PACKAGE_SECTION net)
# Loaded as a plug-in, or run: no library of theirs is linked.
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
