# For modules, in this tree and, installed with the SDK, out of it.

# zo_find_qt(<component>...): of the Qt that the kernel is built with, with the major version ZO_QT. Its libraries are then
# Qt::<component>.
macro(zo_find_qt)
  find_package(Qt${ZO_QT} ${ZO_QT_LEAST} REQUIRED COMPONENTS ${ARGN})
endmacro()

# zo_module_metadata(<target> NAME <name> VERSION <version> LICENCE <identifier of SPDX> [INTERFACE <number>]): lets the
# plug-in file say what it is, so that a host can tell before it runs any code of it. The interface is that of the kernel that the
# module is built against.
function(zo_module_metadata target)
  cmake_parse_arguments(ARG "" "NAME;VERSION;LICENCE;INTERFACE" "" ${ARGN})
  foreach(key IN ITEMS NAME VERSION LICENCE)
    if("${ARG_${key}}" STREQUAL "")
      message(FATAL_ERROR "zo_module_metadata(${target}) needs ${key}")
    endif()
  endforeach()
  if("${ARG_INTERFACE}" STREQUAL "")
    set(ARG_INTERFACE "${ZO_MODULE_INTERFACE}")
  endif()
  set(folder "${CMAKE_CURRENT_BINARY_DIR}/${target}_metadata")
  file(CONFIGURE OUTPUT "${folder}/${target}Metadata.json" @ONLY CONTENT [=[{
  "name": "@ARG_NAME@",
  "version": "@ARG_VERSION@",
  "licence": "@ARG_LICENCE@",
  "interface": @ARG_INTERFACE@
}
]=])
  # Nobody makes an object of it: the class only carries the metadata.
  file(CONFIGURE OUTPUT "${folder}/${target}Metadata.h" @ONLY CONTENT [=[#pragma once

#include <zoModuleInterface.h>

#include <QObject>
#include <QtPlugin>

class @target@Metadata final : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID ZO_MODULE_IID FILE "@target@Metadata.json")
};
]=])
  file(CONFIGURE OUTPUT "${folder}/${target}Metadata.cpp" @ONLY CONTENT [=[#include "@target@Metadata.h"

#include "moc_@target@Metadata.cpp"
]=])
  # Else a build in which nothing but the metadata changed leaves the plug-in file as it was, until the next one.
  set_source_files_properties("${folder}/${target}Metadata.cpp" TARGET_DIRECTORY ${target} PROPERTIES
    OBJECT_DEPENDS "${folder}/${target}Metadata.json")
  set_target_properties(${target} PROPERTIES AUTOMOC ON)
  target_sources(${target} PRIVATE "${folder}/${target}Metadata.h" "${folder}/${target}Metadata.cpp")
  target_include_directories(${target} PRIVATE "${folder}")
endfunction()
