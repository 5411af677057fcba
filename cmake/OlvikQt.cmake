# The Qt that VTK's widget is made with, and with it everything of ours.
#
#   OLVIK_QT           Qt5 or Qt6, the namespace of Qt's targets
#   OLVIK_QT_VERSION   the oldest version that will do
#   OLVIK_SUFFIX       what tells the library for Qt 6 from the one for Qt 5, so that both can be installed
set(OLVIK_QT Qt${VTK_QT_VERSION})
if(OLVIK_QT STREQUAL Qt6)
    set(OLVIK_QT_VERSION 6.2)
    set(OLVIK_SUFFIX -qt6)
else()
    set(OLVIK_QT_VERSION 5.15)
    set(OLVIK_SUFFIX "")
endif()
# A host that adds this project to its own may prefer the other one for its commands without a version.
set(QT_DEFAULT_MAJOR_VERSION ${VTK_QT_VERSION})
find_package(${OLVIK_QT} ${OLVIK_QT_VERSION} REQUIRED COMPONENTS Core Gui Widgets Concurrent)
