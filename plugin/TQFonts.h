#pragma once

#include <QtCore/QObject>
#include <memory>

class FontsInterface;

/// Keeps the model of the fonts for as long as the plugin is there.
class TQFonts : public QObject {
    Q_OBJECT

public:
    static void ConnectModel(std::shared_ptr<TQFonts> const& self, std::shared_ptr<FontsInterface> model);

private:
    std::shared_ptr<FontsInterface> model_;
};
