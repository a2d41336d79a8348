# The headers that most files read, compiled once for each kind of file. A source still names every
# header that it uses: the linter compiles it without these.
set(QVND_STANDARD_HEADERS
    <algorithm> <array> <bit> <cstddef> <cstdint> <filesystem> <functional> <map> <memory> <optional>
    <set> <span> <stdexcept> <string> <string_view> <unordered_map> <utility> <variant> <vector>)
set(QVND_QT_HEADERS
    ${QVND_STANDARD_HEADERS} <QByteArray> <QDate> <QDateTime> <QDir> <QFile> <QFileInfo> <QHash>
    <QJsonArray> <QJsonDocument> <QJsonObject> <QObject> <QString> <QStringList> <QStringView>)
set(QVND_WIDGET_HEADERS ${QVND_QT_HEADERS} <QtWidgets>)
set(QVND_TEST_HEADERS <gmock/gmock.h> <gtest/gtest.h> <fstream> <random> <sstream>)

# One object library for each set; `uses` gives the include paths that the set needs.
function(qvnd_headers name headers uses)
  add_library(${name} OBJECT ${PROJECT_SOURCE_DIR}/cmake/headers.cpp)
  target_link_libraries(${name} PRIVATE qvnd_compiler ${uses})
  target_precompile_headers(${name} PRIVATE ${headers})
endfunction()

qvnd_headers(qvnd_standard_headers "${QVND_STANDARD_HEADERS}" "")
qvnd_headers(qvnd_qt_headers "${QVND_QT_HEADERS}" Qt6::Core)
if(QVND_WINDOWS)
  qvnd_headers(qvnd_widget_headers "${QVND_WIDGET_HEADERS}" Qt6::Widgets)
endif()
if(QVND_TESTS)
  qvnd_headers(qvnd_standard_test_headers "${QVND_STANDARD_HEADERS};${QVND_TEST_HEADERS}" GTest::gmock)
  qvnd_headers(qvnd_qt_test_headers "${QVND_QT_HEADERS};${QVND_TEST_HEADERS}" "Qt6::Core;GTest::gmock")
  set_target_properties(qvnd_standard_test_headers qvnd_qt_test_headers PROPERTIES QVND_IS_TEST ON)
  if(QVND_WINDOWS)
    qvnd_headers(qvnd_widget_test_headers "${QVND_WIDGET_HEADERS};${QVND_TEST_HEADERS}"
                 "Qt6::Widgets;GTest::gmock")
    set_target_properties(qvnd_widget_test_headers PROPERTIES QVND_IS_TEST ON)
  endif()
endif()
