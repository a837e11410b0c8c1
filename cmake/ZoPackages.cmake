# The packages of Debian, one for each component, and a tar.gz of all. dev/package builds them.

set(CPACK_PACKAGE_NAME zo)
set(CPACK_PACKAGE_VERSION "${ZO_PACKAGE_VERSION}")
set(CPACK_PACKAGE_VENDOR "zo maintainers")
set(CPACK_PACKAGE_CONTACT "zo maintainers <maintainers@zo.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_RESOURCE_FILE_LICENSE "${PROJECT_SOURCE_DIR}/LICENSE")
set(CPACK_PACKAGE_FILE_NAME "zo-${ZO_PACKAGE_VERSION}-${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR}")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES OFF) # their symbols go into packages of their own
set(CPACK_COMPONENTS_ALL host tools server sdk kernel)
set(CPACK_ARCHIVE_COMPONENT_INSTALL OFF)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SOURCE zo)
set(CPACK_DEBIAN_COMPRESSION_TYPE none) # dev/package packs them again
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The kernel's library is in none of the installed packages; who needs it says so below.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${PROJECT_BINARY_DIR}/lib")
# CPack also generates scripts that call ldconfig; dev/package takes them out again.
set(control "${PROJECT_BINARY_DIR}/Packaging/libzokernel0")
file(WRITE "${control}/shlibs" "libzoKernel 0 libzokernel0 (= ${ZO_PACKAGE_VERSION})\n")
file(WRITE "${control}/triggers" "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_KERNEL_PACKAGE_CONTROL_EXTRA "${control}/shlibs" "${control}/triggers")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_DEBUGINFO_PACKAGE ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS OFF)

# zo_package(<COMPONENT> <name> <section> <summary> <description> [DEPENDS <...>] [RECOMMENDS <...>]): a package in the
# words of apt.
function(zo_package component name section summary description)
  cmake_parse_arguments(ARG "" "DEPENDS;RECOMMENDS" "" ${ARGN})
  foreach(entry IN ITEMS "PACKAGE_NAME=${name}" "PACKAGE_SECTION=${section}" "PACKAGE_DEPENDS=${ARG_DEPENDS}"
      "PACKAGE_RECOMMENDS=${ARG_RECOMMENDS}" "DESCRIPTION=${summary}\n${description}")
    string(REGEX MATCH "^[A-Z_]+" key "${entry}")
    string(REGEX REPLACE "^[A-Z_]+=" "" value "${entry}")
    set(CPACK_DEBIAN_${component}_${key} "${value}" PARENT_SCOPE)
  endforeach()
  string(TOUPPER "CPACK_COMPONENT_${component}_DESCRIPTION" key)
  set(${key} "${summary}\n${description}" PARENT_SCOPE)
endfunction()

zo_package(KERNEL libzokernel0 libs
  "visualisation host for render clusters - shared library"
  "What hosts, modules and tools of render cluster configurations share:\ninterfaces and registry of services, log, icons, and files that are\nreplaced as a whole.")
zo_package(HOST zo-host graphics
  "visualisation host for render clusters"
  "Describes a render cluster (networks, compute nodes, gateways), lays out the\ndisplays that it drives (power walls, tiled walls, caves, planes), and starts\nand stops sessions on it, rehearsals on one machine included."
  DEPENDS "libzokernel0 (= ${ZO_PACKAGE_VERSION})"
  RECOMMENDS "zo-server (= ${ZO_PACKAGE_VERSION}), zo-tools, openssh-client")
zo_package(TOOLS zo-tools graphics
  "render cluster configurations on the command line"
  "Checks, compares, merges, draws, exports and changes configurations of render\nclusters, and converts between the notations of their hosts, without a window."
  DEPENDS "libzokernel0 (= ${ZO_PACKAGE_VERSION})")
zo_package(SERVER zo-server graphics
  "node server for render cluster sessions"
  "Runs on each node of a render cluster, started by the host over ssh or MPI:\nopens the windows of the node and shows tiles or a test image in them."
  RECOMMENDS "openmpi-bin, openssh-server")
zo_package(SDK zo-sdk libdevel
  "visualisation host for render clusters - files for module authors"
  "Headers, the archive of the cluster core, CMake and pkg-config files, and the\nschema of configurations."
  DEPENDS "libzokernel0 (= ${ZO_PACKAGE_VERSION}), qtbase5-dev (>= 5.15)")

include(CPack)
