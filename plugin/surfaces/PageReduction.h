#pragma once

#include <QtGui/QImage>

/// The page in that size, which is no larger: each pixel is the average of the dots that it covers, also of parts of
/// dots. Grey, 8 bits. A page of 1 bit a dot takes a small part of the time that scaling pictures of any kind takes.
QImage ReducedPage(QImage const& page, QSize size);
