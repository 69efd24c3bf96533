#include "plugin/surfaces/PageReader.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QPointer>
#include <QtCore/QThreadPool>
#include <QtGui/QImageReader>

#include "plugin/surfaces/PageReduction.h"

namespace PageReader {

namespace {

/// One thread: pages are large, and the printer has other things to do.
QThreadPool& Pool() {
    static QThreadPool* const pool = [] {
        auto* const made = new QThreadPool(QCoreApplication::instance());
        made->setMaxThreadCount(1);
        return made;
    }();
    return *pool;
}

QImage Small(QImage const& page, QSize room) {
    if (page.isNull()) return page;
    return ReducedPage(page, page.size().scaled(room.boundedTo(page.size()), Qt::KeepAspectRatio));
}

}  // namespace

QImage Read(QStringList const& files) {
    QImageReader::setAllocationLimit(MostMegabytes);
    for (auto const& file : files) {
        QImage page = QImageReader(file, "png").read();
        if (!page.isNull()) return page;
    }
    return {};
}

void ReadSmall(QObject* receiver, QStringList files, QSize room, std::function<bool()> isWanted,
               std::function<void(QImage)> take) {
    static int calls = 0;
    auto const hand = [receiver = QPointer<QObject>(receiver), take = std::move(take)](QImage const& picture) {
        if (receiver) take(picture);
    };
    Pool().start(
        [files = std::move(files), room, isWanted = std::move(isWanted), hand] {
            if (!isWanted()) return;
            QMetaObject::invokeMethod(
                QCoreApplication::instance(), [hand, picture = Small(Read(files), room)] { hand(picture); },
                Qt::QueuedConnection);
        },
        ++calls);
}

}  // namespace PageReader
