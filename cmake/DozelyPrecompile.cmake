# dozely_precompile(TARGET GROUP [HEADERS...]): the headers that nearly every source includes are parsed once for all
# targets of a group, which have the same flags; the first one names the headers.
#
# It hides an include that is missing. A build without it does not: the preset "bench", which "./dev tidy" uses too, and
# the check that each public header compiles alone.
function(dozely_precompile target group)
    get_property(first GLOBAL PROPERTY DOZELY_PRECOMPILED_${group})
    if(first)
        target_precompile_headers(${target} REUSE_FROM ${first})
    else()
        set_property(GLOBAL PROPERTY DOZELY_PRECOMPILED_${group} ${target})
        target_precompile_headers(${target} PRIVATE ${ARGN})
    endif()
endfunction()

set(DOZELY_CORE_HEADERS
    <QByteArray> <QDateTime> <QDir> <QFile> <QHash> <QList> <QMap> <QMetaObject> <QObject> <QPointer> <QSet> <QString>
    <QStringList> <QTimeZone> <QTimer> <QVariant>
    <algorithm> <chrono> <functional> <memory> <optional> <string> <utility> <vector>)
set(DOZELY_WIDGET_HEADERS
    ${DOZELY_CORE_HEADERS} <QApplication> <QEvent> <QImage> <QPainter> <QStyle> <QWidget>)
