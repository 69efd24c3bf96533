#pragma once

#include <QtCore/QSize>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtGui/QImage>
#include <functional>

class QObject;

/// Reads pages for a strip of small pictures, beside the main thread.
namespace PageReader {

/// Decoded pages take at most so many megabytes each.
inline constexpr int MostMegabytes = 256;

/// The page of the first of these files that holds one; null if none does.
QImage Read(QStringList const& files);

/// Reads the page, makes it small enough for `room`, and hands it to `take` on the main thread, null if there is none.
/// Nothing is handed over when `receiver` is gone, and nothing is read that is not wanted any more, which any thread
/// may ask. What was asked for last is read first: it is what is looked at.
void ReadSmall(QObject* receiver, QStringList files, QSize room, std::function<bool()> isWanted,
               std::function<void(QImage)> take);

}  // namespace PageReader
