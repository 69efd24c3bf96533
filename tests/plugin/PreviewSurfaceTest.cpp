#include <gtest/gtest.h>

#include "tests/plugin/Surface.h"

namespace {

/// 40 x 30 dots, of which one is black.
QImage PageWithDot(int x, int y) {
    QImage page(40, 30, QImage::Format_Grayscale8);
    page.fill(Qt::white);
    page.setPixelColor(x, y, Qt::black);
    return page;
}

TEST(PageInMemory, LiesWhereItsDotsAreSaidToBe) {
    TheHost();
    messages.clear();
    for (bool const turned : {false, true}) {
        for (double const zoom : {1.0, 4.0, 20.0}) {
            Surface view(QStringLiteral("PageView"));
            view.Set("turned", turned);
            view.Set("picture", PageWithDot(7, 11));
            view.Set("zoom", zoom);
            view.Set("origin", QPointF(zoom > 4 ? 60 : 0, zoom > 4 ? 140 : 0));
            QImage const screen = view.Grab();
            QRectF place;
            view.Invoke("itemRect", place, QRectF(7, 11, 1, 1));
            EXPECT_EQ(place.size(), QSizeF(zoom, zoom));
            QRect const dot = place.toRect();
            for (int y = 0; y < screen.height(); ++y) {
                for (int x = 0; x < screen.width(); ++x)
                    ASSERT_EQ(qGray(screen.pixel(x, y)) == 0, dot.contains(x, y)) << zoom << ' ' << x << ' ' << y;
            }
            QPointF back;
            view.Invoke("dotAt", back, place.center());
            EXPECT_EQ(back, QPointF(7.5, 11.5)) << zoom << turned;
        }
    }
    EXPECT_EQ(messages.join(u'\n').toStdString(), "");
}

}  // namespace
