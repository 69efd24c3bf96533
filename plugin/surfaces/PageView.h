#pragma once

#include <QtCore/QCache>
#include <QtCore/QFileSystemWatcher>
#include <QtGui/QImage>
#include <QtQuick/QQuickPaintedItem>
#include <atomic>
#include <memory>
#include <vector>

/// Shows one page of a job folder, dot for dot: from a zoom of 1 on each dot is a square of whole screen pixels, below
/// it the page is averaged down. The item is the window onto the page, not the page, so its memory does not grow with
/// the zoom. A page that is not there yet is shown as soon as it is; one that has been printed and is gone from the
/// folder is taken from where printed pages are kept. Without a folder it is a job that is over, of which there are
/// only these. The picture is always that of `shownPage`.
class PageView : public QQuickPaintedItem {
    Q_OBJECT
    Q_PROPERTY(QString folder READ folder WRITE setFolder NOTIFY folderChanged)
    /// What the file names of printed pages begin with; behind it stand the page's number from 1, and ".png".
    Q_PROPERTY(QString printedPages READ printedPages WRITE setPrintedPages NOTIFY printedPagesChanged)
    Q_PROPERTY(int page READ page WRITE setPage NOTIFY pageChanged)  ///< counted from 0
    /// It is one of many that are seen small: the page alone is shown, averaged down to the item, and read beside the
    /// main thread. Nothing tells of other pages; `lookAgain` looks for one that was not there. Set first.
    Q_PROPERTY(bool small MEMBER small_ NOTIFY smallChanged)
    /// A page drawn in memory, shown in place of any other while it is there; 1 or 8 bits a dot.
    Q_PROPERTY(QImage picture READ picture WRITE setPicture NOTIFY pictureChanged)
    /// Whether the page is looked at upside down, as it leaves the printer.
    Q_PROPERTY(bool turned READ isTurned WRITE setTurned NOTIFY turnedChanged)
    /// Whether the picture stays until that of another page asked for is there; else there is none until then.
    Q_PROPERTY(bool keepsPicture MEMBER keepsPicture_ NOTIFY keepsPictureChanged)
    Q_PROPERTY(int pageCount READ pageCount NOTIFY pageCountChanged)
    Q_PROPERTY(QString jobName READ jobName NOTIFY pageCountChanged)
    Q_PROPERTY(bool isShown READ isShown NOTIFY shownChanged)     ///< the picture is that of the page asked for
    Q_PROPERTY(int shownPage READ shownPage NOTIFY shownChanged)  ///< of the picture; -1 without one
    Q_PROPERTY(int shownPageCount READ shownPageCount NOTIFY shownChanged)  ///< of its job
    /// Barcodes of the page shown that may not scan, as its file says; they are outlined.
    Q_PROPERTY(int badBarcodes READ badBarcodes NOTIFY shownChanged)
    Q_PROPERTY(QSize dots READ dots NOTIFY shownChanged)  ///< of the page shown

    Q_PROPERTY(double zoom READ zoom WRITE setZoom NOTIFY zoomChanged)  ///< screen pixels for a dot
    /// The zoom at which the whole page is seen; whole, if it is 1 or more.
    Q_PROPERTY(double fittingZoom READ fittingZoom NOTIFY fittingZoomChanged)
    /// Of the zoomed page with its margin, in the units of items.
    Q_PROPERTY(QSizeF contentSize READ contentSize NOTIFY zoomChanged)
    /// What part of the content is seen: its upper left.
    Q_PROPERTY(QPointF origin READ origin WRITE setOrigin NOTIFY originChanged)
    /// Where the page lies, in the units of the item. What calls `dotAt` or `itemRect` depends on this alone.
    Q_PROPERTY(QRectF pageRect READ pageRect NOTIFY pageRectChanged)

public:
    explicit PageView(QQuickItem* parent = nullptr);

    QString folder() const { return folder_; }
    void setFolder(QString const& folder);
    QString printedPages() const { return printedPages_; }
    void setPrintedPages(QString const& printedPages);
    int page() const { return page_; }
    void setPage(int page);
    int pageCount() const { return pageCount_; }
    QString jobName() const { return jobName_; }
    QImage picture() const { return given_; }
    void setPicture(QImage const& picture);
    bool isTurned() const { return turned_; }
    void setTurned(bool turned);
    bool isShown() const { return shown_; }
    int shownPage() const { return picture_.isNull() ? -1 : shownPage_; }
    int shownPageCount() const { return shownPageCount_; }
    int badBarcodes() const { return static_cast<int>(marks_.size()); }
    QSize dots() const { return picture_.size(); }
    double zoom() const { return zoom_; }
    void setZoom(double zoom);
    double fittingZoom() const;
    QSizeF contentSize() const;
    QPointF origin() const { return origin_; }
    void setOrigin(QPointF origin);
    QRectF pageRect() const;

    /// The dot of the page that lies at a point of the item; also beyond the page.
    Q_INVOKABLE QPointF dotAt(QPointF item) const;
    /// Where a rectangle of the page lies in the item.
    Q_INVOKABLE QRectF itemRect(QRectF dots) const;
    /// The `printedPages` of the job that was printed before (`step` -1) or behind (1) this one; empty without one.
    Q_INVOKABLE QString printedPagesBeside(int step) const;

    /// Looks again for the page asked for, if it is not shown.
    Q_INVOKABLE void lookAgain();

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void folderChanged();
    void printedPagesChanged();
    void keepsPictureChanged();
    void smallChanged();
    /// Pages may have come to the folder, or gone.
    void folderTold();
    void pageChanged();
    void pictureChanged();
    void turnedChanged();
    void pageCountChanged();
    void shownChanged();
    void zoomChanged();
    void fittingZoomChanged();
    void originChanged();
    void pageRectChanged();

protected:
    void geometryChange(QRectF const& now, QRectF const& before) override;
    void itemChange(ItemChange change, ItemChangeData const& data) override;

private:
    /// Of a barcode, in dots of the page as it prints.
    struct Mark {
        QRect box;
        bool isFault;
    };

    static std::vector<Mark> MarksOf(QImage const& page);
    void PaintMarks(QPainter& painter) const;
    void Ask();
    void Load();
    void Show(QImage picture, QString const& identity = {});
    void ReadJob();
    void SetPageCount(int count);
    void CountPrintedPages();
    QStringList Files() const;
    void LoadSmall();
    double Margin() const;
    double PixelRatio() const;
    QPoint Corner() const;
    QImage const& Reduced();

    QFileSystemWatcher watcher_;
    QString folder_;
    QString printedPages_;
    QString jobName_;
    bool keepsPicture_ = false;
    bool small_ = false;
    // Of small pages, that were asked for: none but the last counts.
    std::shared_ptr<std::atomic<int>> loads_ = std::make_shared<std::atomic<int>>(0);
    int page_ = 0;
    int pageCount_ = 0;
    bool shown_ = false;
    int shownPage_ = -1;
    int shownPageCount_ = 0;
    QImage given_;  // by `picture`
    bool turned_ = false;
    std::vector<Mark> marks_;
    QImage picture_;                // as it is looked at
    QImage reduced_;                // the picture at a zoom below 1; made when it is painted
    QString identity_;              // what the picture shows; empty where it does not come again
    QCache<QString, QImage> kept_;  // pages that were reduced lately, by what they show and how
    double zoom_ = 1;
    QPointF origin_;
};
