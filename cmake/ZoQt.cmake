# Which Qt: 5.15 or, with -DZO_QT=6, 6. Elsewhere its libraries are Qt::Core and so on; only what an installation says of
# itself, and programs of Qt, have the number.
set(ZO_QT 5 CACHE STRING "Major version of Qt, 5 or 6")
set_property(CACHE ZO_QT PROPERTY STRINGS 5 6)
if(NOT ZO_QT MATCHES "^[56]$")
  message(FATAL_ERROR "ZO_QT is ${ZO_QT}; it may be 5 or 6")
endif()
set(ZO_QT_LEAST 5.15)
if(ZO_QT EQUAL 6)
  set(ZO_QT_LEAST 6.4)
endif()
set(QT_DEFAULT_MAJOR_VERSION ${ZO_QT})

zo_find_qt(Core Gui Widgets Xml Svg Network LinguistTools)
# What Qt 5 has in other libraries of these: drawing with GL, the lenient reader of documents and its encodings.
set(ZO_QT_OPENGL "")
set(ZO_QT_COMPAT "")
if(ZO_QT EQUAL 6)
  zo_find_qt(OpenGL Core5Compat)
  set(ZO_QT_OPENGL Qt::OpenGL)
  set(ZO_QT_COMPAT Qt::Core5Compat)
endif()
