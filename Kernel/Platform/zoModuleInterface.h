#pragma once

// What plug-in files say of themselves, for hosts to read before any code of them runs: Qt's plug-in metadata under this
// name, an object with "name", "version", "licence" and "interface". zo_module_metadata() of the CMake configuration puts
// it into a module.
#define ZO_MODULE_IID "io.zo.Module"

// Counts up whenever a module that was built before would not run any more with a host that is built now: an interface of
// the services lost or changed an operation, or an entry is called otherwise. CMake reads the number here.
#define ZO_MODULE_INTERFACE 1
