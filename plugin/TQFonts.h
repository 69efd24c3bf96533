#pragma once

#include <QtCore/QObject>
#include <QtCore/QStringList>
#include <memory>

class FontsInterface;

/// The font families that surfaces can show.
class TQFonts : public QObject {
    Q_OBJECT
    Q_PROPERTY(QStringList families READ families NOTIFY familiesChanged)

public:
    static void ConnectModel(std::shared_ptr<TQFonts> const& self, std::shared_ptr<FontsInterface> model);

    QStringList families() const;

Q_SIGNALS:
    void familiesChanged();

private:
    std::shared_ptr<FontsInterface> model_;
};
