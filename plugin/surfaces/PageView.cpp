#include "plugin/surfaces/PageView.h"

#include <QtCore/QDir>
#include <QtGui/QPainter>
#include <QtQuick/QQuickWindow>
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <system_error>

#include "PrintEngine/Printing/JobMetaData.h"
#include "Scripting/PageNotes.h"
#include "plugin/surfaces/PageReader.h"
#include "plugin/surfaces/PageReduction.h"
#include "plugin/surfaces/PrintedJobs.h"

namespace {

constexpr QColor Fault(0xd3, 0x2f, 0x2f);
constexpr QColor Doubt(0xe6, 0x8a, 0x00);
constexpr QColor Outline(0x90, 0x90, 0x90);
constexpr int MostKept = 2 << 20;  // bytes of reduced pages: some dozens that fill a small display

/// Of what a file holds now; empty if it is not there.
QString IdentityOf(QString const& file) {
    std::error_code error;
    auto const time = std::filesystem::last_write_time(file.toStdString(), error);
    return error ? QString() : QString::number(time.time_since_epoch().count()) + u' ' + file;
}

}  // namespace

PageView::PageView(QQuickItem* parent) : QQuickPaintedItem(parent), kept_(MostKept) {
    for (auto const placed : {&PageView::zoomChanged, &PageView::originChanged, &PageView::fittingZoomChanged})
        connect(this, placed, this, &PageView::pageRectChanged);
    connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, [this] {
        if (pageCount_ == 0) ReadJob();
        lookAgain();
        Q_EMIT folderTold();
    });
}

void PageView::setFolder(QString const& folder) {
    if (folder == folder_) return;
    if (!watcher_.directories().isEmpty()) watcher_.removePaths(watcher_.directories());
    folder_ = folder;
    printedPages_.clear();
    jobName_.clear();
    shown_ = false;
    SetPageCount(0);
    Q_EMIT printedPagesChanged();
    if (!small_ && !folder_.isEmpty() && QDir(folder_).exists()) watcher_.addPath(folder_);
    ReadJob();
    Q_EMIT folderChanged();
    Ask();
}

/// Of the job in the folder, or without one of another job.
void PageView::setPrintedPages(QString const& printedPages) {
    if (printedPages == printedPages_) return;
    printedPages_ = printedPages;
    Q_EMIT printedPagesChanged();
    if (folder_.isEmpty()) {
        jobName_.clear();
        shown_ = false;
        SetPageCount(0);
        CountPrintedPages();
        return Ask();
    }
    if (pageCount_ == 0) CountPrintedPages();
    lookAgain();
}

void PageView::lookAgain() {
    if (!shown_) Load();
}

void PageView::setPage(int page) {
    if (page == page_) return;
    page_ = page;
    Q_EMIT pageChanged();
    Ask();
}

void PageView::setPicture(QImage const& picture) {
    if (picture.cacheKey() == given_.cacheKey()) return;
    given_ = picture;
    kept_.clear();
    Q_EMIT pictureChanged();
    if (given_.isNull()) return Ask();
    Load();
}

void PageView::setTurned(bool turned) {
    if (turned == turned_) return;
    turned_ = turned;
    picture_ = picture_.mirrored(true, true);
    reduced_ = {};
    Q_EMIT turnedChanged();
    Q_EMIT pageRectChanged();
    update();
}

/// That hold the page, if they are there.
QStringList PageView::Files() const {
    QStringList files;
    if (!folder_.isEmpty()) files.append(QDir(folder_).filePath(QString::number(page_)));
    if (!printedPages_.isEmpty()) files.append(printedPages_ + QString::number(page_ + 1) + QStringLiteral(".png"));
    return files;
}

void PageView::ReadJob() {
    if (folder_.isEmpty() || small_) return;
    auto const metaData = PrintEngine::Printing::JobMetaData::Read(folder_.toStdString());
    if (!metaData) return;
    jobName_ = QString::fromStdString(metaData->jobName);
    SetPageCount(static_cast<int>(std::min<unsigned>(metaData->totalPages, 1U << 30)));
}

void PageView::SetPageCount(int count) {
    pageCount_ = count;
    if (shown_) shownPageCount_ = count;
    Q_EMIT pageCountChanged();
    Q_EMIT shownChanged();
}

/// A job that was over before it was looked at.
void PageView::CountPrintedPages() {
    auto const job = small_ ? std::nullopt : PrintedJob::Find(printedPages_);
    if (!job) return;
    if (jobName_.isEmpty()) jobName_ = job->name;
    SetPageCount(job->pages);
}

QString PageView::printedPagesBeside(int step) const {
    auto const job = PrintedJob::Beside(printedPages_, step);
    return job ? job->stem : QString();
}

/// Another page is asked for.
void PageView::Ask() {
    shown_ = false;
    ++*loads_;
    if (!keepsPicture_) {
        picture_ = {};
        reduced_ = {};
        marks_.clear();
        update();
    }
    Q_EMIT shownChanged();
    Load();
}

void PageView::Load() {
    if (!given_.isNull()) return Show(given_, QStringLiteral("given"));
    if (page_ < 0) return;
    if (small_) return LoadSmall();
    for (auto const& file : Files()) {
        auto const identity = IdentityOf(file);
        if (QImage picture = PageReader::Read({file}); !picture.isNull()) return Show(std::move(picture), identity);
    }
}

/// The window draws the first of them before there is a size.
void PageView::LoadSmall() {
    QSize const room = (QSizeF(width() - 2 * Margin(), height() - 2 * Margin()) * PixelRatio()).toSize();
    if (room.isEmpty() || (folder_.isEmpty() && printedPages_.isEmpty())) return;
    int const load = ++*loads_;
    auto const isWanted = [loads = loads_, load] { return *loads == load; };
    PageReader::ReadSmall(this, Files(), room, isWanted, [this, isWanted](QImage picture) {
        if (isWanted() && !picture.isNull()) Show(std::move(picture));
    });
}

void PageView::Show(QImage picture, QString const& identity) {
    marks_ = small_ ? std::vector<Mark>() : MarksOf(picture);
    picture_ = turned_ ? picture.mirrored(true, true) : std::move(picture);
    identity_ = identity;
    reduced_ = {};
    shown_ = true;
    shownPage_ = page_;
    shownPageCount_ = pageCount_;
    Q_EMIT shownChanged();
    Q_EMIT fittingZoomChanged();
    Q_EMIT zoomChanged();
    update();
}

void PageView::setZoom(double zoom) {
    constexpr double Least = 0.02;
    constexpr double Most = 32;
    zoom = std::clamp(zoom, Least, Most);
    if (zoom == zoom_) return;
    zoom_ = zoom;
    reduced_ = {};
    Q_EMIT zoomChanged();
    update();
}

void PageView::setOrigin(QPointF origin) {
    if (origin == origin_) return;
    origin_ = origin;
    Q_EMIT originChanged();
    update();
}

/// Around the page, in the units of items.
double PageView::Margin() const { return small_ ? 2 : 16; }

double PageView::PixelRatio() const { return window() ? window()->effectiveDevicePixelRatio() : 1; }

double PageView::fittingZoom() const {
    if (picture_.isNull()) return 1;
    double const zoom =
        std::min((width() - 2 * Margin()) / picture_.width(), (height() - 2 * Margin()) / picture_.height()) *
        PixelRatio();
    return zoom >= 1 ? std::floor(zoom) : std::max(zoom, 0.0);
}

QSizeF PageView::contentSize() const {
    double const scale = zoom_ / PixelRatio();
    return {picture_.width() * scale + 2 * Margin(), picture_.height() * scale + 2 * Margin()};
}

void PageView::geometryChange(QRectF const& now, QRectF const& before) {
    QQuickPaintedItem::geometryChange(now, before);
    Q_EMIT fittingZoomChanged();
    if (small_ && !shown_) Load();
}

void PageView::itemChange(ItemChange change, ItemChangeData const& data) {
    if (change == ItemSceneChange || change == ItemDevicePixelRatioHasChanged) {
        Q_EMIT fittingZoomChanged();
        Q_EMIT zoomChanged();
    }
    QQuickPaintedItem::itemChange(change, data);
}

/// The upper left of the page, in screen pixels: whole ones, so that dots have sharp edges.
QPoint PageView::Corner() const {
    QSizeF const content = contentSize();
    auto const start = [this, ratio = PixelRatio()](double room, double size, double origin) {
        return static_cast<int>(std::lround((std::max((room - size) / 2, 0.0) + Margin() - origin) * ratio));
    };
    return {start(width(), content.width(), origin_.x()), start(height(), content.height(), origin_.y())};
}

QRectF PageView::pageRect() const {
    double const ratio = PixelRatio();
    return {QPointF(Corner()) / ratio, QSizeF(picture_.size()) * zoom_ / ratio};
}

QPointF PageView::dotAt(QPointF item) const {
    QPointF const dot = (item * PixelRatio() - QPointF(Corner())) / zoom_;
    return turned_ ? QPointF(picture_.width(), picture_.height()) - dot : dot;
}

QRectF PageView::itemRect(QRectF dots) const {
    QSizeF const page = picture_.size();
    if (turned_) dots.moveTopLeft({page.width() - dots.right(), page.height() - dots.bottom()});
    double const ratio = PixelRatio();
    return {(QPointF(Corner()) + dots.topLeft() * zoom_) / ratio, dots.size() * zoom_ / ratio};
}

QImage const& PageView::Reduced() {
    if (!reduced_.isNull()) return reduced_;
    QSize const size = (QSizeF(picture_.size()) * zoom_).toSize();
    auto const key = QStringLiteral("%1 %2 %3 ").arg(size.width()).arg(size.height()).arg(turned_) + identity_;
    auto const* const kept = identity_.isEmpty() ? nullptr : kept_.object(key);
    reduced_ = kept ? *kept : ReducedPage(picture_, size);
    if (!kept && !identity_.isEmpty())
        kept_.insert(key, new QImage(reduced_), static_cast<int>(reduced_.sizeInBytes()));
    return reduced_;
}

void PageView::paint(QPainter* painter) {
    if (picture_.isNull()) return;
    double const ratio = PixelRatio();
    // From here on in screen pixels.
    painter->scale(1 / ratio, 1 / ratio);
    QPoint const corner = Corner();
    QRect page;
    if (zoom_ < 1) {
        page = QRect(corner, Reduced().size());
        painter->drawImage(corner, Reduced());
    } else {
        page = QRect(corner, (QSizeF(picture_.size()) * zoom_).toSize());
        painter->setRenderHint(QPainter::SmoothPixmapTransform, false);
        painter->drawImage(page, picture_);
    }
    painter->setPen(Outline);
    painter->drawRect(page.adjusted(-1, -1, 0, 0));
    painter->scale(ratio, ratio);
    PaintMarks(*painter);
}

/// As the file of the page tells (see ZplCore::MarksOfBarcodes); what is none of them is passed over.
std::vector<PageView::Mark> PageView::MarksOf(QImage const& page) {
    std::vector<Mark> marks;
    for (auto const& mark :
         page.text(QString::fromLatin1(Scripting::PageNotes::Keyword)).split(u';', Qt::SkipEmptyParts)) {
        QStringList const words = mark.split(u' ');
        if (words.size() != 5) continue;
        QRect const box(words[1].toInt(), words[2].toInt(), words[3].toInt(), words[4].toInt());
        if (box.isValid()) marks.push_back({box, words[0] == QLatin1String("fault")});
    }
    return marks;
}

void PageView::PaintMarks(QPainter& painter) const {
    constexpr double Width = 3;
    constexpr double Room = 4;  // between the barcode and its outline
    painter.setRenderHint(QPainter::Antialiasing);
    for (auto const& mark : marks_) {
        painter.setPen(QPen(mark.isFault ? Fault : Doubt, Width));
        painter.drawRoundedRect(itemRect(mark.box).adjusted(-Room, -Room, Room, Room), Room, Room);
    }
}
