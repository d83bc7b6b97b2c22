# One binary package of everything that is installed: `cpack` in the build folder, or tools/build-package.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME ${app})
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR Brindlefox)
set(CPACK_PACKAGE_CONTACT "Brindlefox Apple Bridge maintainers <maintainers@brindlefox.example>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEB_COMPONENT_INSTALL OFF)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "let a trusted local agent work with your calendars and files")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Brindlefox Apple Bridge is an icon in the panel and a server on the loopback
address. It lets one program that you have paired with it, your Agent Server,
read and change calendars, reminders, contacts, music, documents and chosen
folders, find places and routes.
.
Nothing is allowed until you switch it on in the dashboard: 47 switches, and
a list of the calendars, reminder lists and folders that may be touched.
What deletes or overwrites must be confirmed in each request, and deleted
files go to the Trash.
.
The bridge works with what the desktop has (Evolution Data Server, the Music
Player Daemon, LibreOffice, GeoClue) and keeps calendars and contacts of its
own where that is missing.")

# Libraries are found by what the programs link; these are read, started, or loaded by name.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "tzdata, libcurl4")
if(HAVE_SHELL)
    foreach(module qtqml qtqml-models qtqml-workerscript qtquick qtquick-templates qtquick-window)
        string(APPEND CPACK_DEBIAN_PACKAGE_DEPENDS ", qml6-module-${module}")
    endforeach()
endif()
# A LibreOffice that is installed with its windows will do as well.
set(recommended "bubblewrap" "evolution-data-server" "geoclue-2.0" "mpd" "xdg-desktop-portal" "fonts-inter"
    "libreoffice-writer-nogui | libreoffice-writer" "libreoffice-calc-nogui | libreoffice-calc"
    "libreoffice-impress-nogui | libreoffice-impress")
if(HAVE_SHELL)
    # Where there is Wayland without an X server for older programs.
    list(APPEND recommended "qt6-wayland")
endif()
list(JOIN recommended ", " CPACK_DEBIAN_PACKAGE_RECOMMENDS)
# A keyring for the credential; without one it lies in a file that only the user can read.
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "gnome-keyring")
include(CPack)
