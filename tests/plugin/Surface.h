#pragma once

#include <gtest/gtest.h>

#include <QtGui/QGuiApplication>
#include <QtGui/QImage>
#include <QtQml/QQmlApplicationEngine>
#include <QtQml/QQmlComponent>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtTest/QTest>
#include <array>
#include <functional>

#include "foundation/AppSettings.h"
#include "plugin/LabelRenderPlugin.h"
#include "propertybus/PublishingPropertyManager.h"
#include "tests/support/TemporaryDirectory.h"

inline QStringList messages;  ///< of Qt since they were cleared

/// The plugin, with the engine of a user interface.
struct Host {
    Host() {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        AppSettings::GetInstance().SetStorageDir(storage.Path());
        qInstallMessageHandler([](QtMsgType, QMessageLogContext const&, QString const& text) {
            // Of the toolkit about itself, where a window is grabbed as an animation ends.
            if (!text.startsWith(QStringLiteral("QUnifiedTimer::stopAnimationDriver"))) messages.append(text);
        });
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
        application = std::make_unique<QGuiApplication>(argc, argv.data());
        engine = std::make_shared<QQmlApplicationEngine>();
        plugin.Create(QString(), engine);
        plugin.Init(properties, nullptr);
        messages.clear();
    }
    template <typename T, typename V>
    void Set(char const* identifier, V value) {
        std::dynamic_pointer_cast<T>(properties->Find(identifier))->Set(value);
    }

    TemporaryDirectory storage;  ///< of the printer
    std::array<char, 5> name{"test"};
    std::array<char*, 2> argv{name.data(), nullptr};
    int argc = 1;
    std::unique_ptr<QGuiApplication> application;
    std::shared_ptr<QQmlApplicationEngine> engine;
    LabelRenderPlugin plugin;
    std::shared_ptr<PublishingPropertyManager> properties = std::make_shared<PublishingPropertyManager>();
};

inline std::unique_ptr<Host> theHost;

/// Made by the first test that needs it, and gone before the process begins to end.
inline Host& TheHost() {
    if (!theHost) theHost = std::make_unique<Host>();
    return *theHost;
}

struct EndOfHost : testing::Environment {
    void TearDown() override { theHost.reset(); }
};
[[maybe_unused]] inline auto* const endOfHost = testing::AddGlobalTestEnvironment(new EndOfHost);

/// A surface in a window of its own.
class Surface {
public:
    explicit Surface(QString const& name, QSize size = {400, 300}) {
        QQmlComponent component(TheHost().engine.get());
        // As if it stood beside the surfaces, so that their parts can be looked at too.
        component.setData("import TCPrintEngine\n" + name.toLatin1() + " {}",
                          QUrl(QStringLiteral("qrc:/TCPrintEngine/Test.qml")));
        object_.reset(component.create());
        EXPECT_TRUE(object_) << component.errorString().toStdString();
        item_ = qobject_cast<QQuickItem*>(object_.get());
        if (!item_) return;
        item_->setParentItem(window_.contentItem());
        item_->setSize(size);
        window_.resize(size);
        window_.show();
        Settle();
    }
    Surface(Surface const&) = delete;
    Surface& operator=(Surface const&) = delete;
    /// What the scene puts off is done while there is a scene, and not left over at the end of the process.
    ~Surface() {
        object_.reset();
        Settle();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    static void Settle() {
        for (int i = 0; i < 5; ++i) QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    }
    QImage Grab(QImage::Format format = QImage::Format_Grayscale8) {
        Settle();
        return window_.grabWindow().convertToFormat(format);
    }
    QVariant Value(char const* property) {
        Settle();
        return item_->property(property);
    }
    void Set(char const* property, QVariant const& value) { item_->setProperty(property, value); }
    template <typename... Args>
    void Call(char const* method, Args... args) {
        EXPECT_TRUE(QMetaObject::invokeMethod(item_, method, Q_ARG(QVariant, QVariant(args))...)) << method;
    }
    /// Of a method in C++.
    template <typename R, typename A>
    void Invoke(char const* method, R& result, A const& argument) {
        Settle();
        EXPECT_TRUE(QMetaObject::invokeMethod(item_, method,
                                              QGenericReturnArgument(QMetaType::fromType<R>().name(), &result),
                                              QGenericArgument(QMetaType::fromType<A>().name(), &argument)))
            << method;
    }
    /// An item of the surface, or of what stands above it, by its name: of several one that is seen.
    QQuickItem& Item(char const* name) {
        auto* found = Find(*window_.contentItem(), QString::fromLatin1(name), true);
        if (!found) found = Find(*window_.contentItem(), QString::fromLatin1(name));
        if (!found) throw std::runtime_error(std::string("there is no ") + name);
        return *found;
    }
    /// A finger or a mouse on the middle of an item, or at a point of it.
    void Click(char const* name) {
        Grab();  // items have their places when they have been drawn
        auto const& item = Item(name);
        ClickAt(item, {item.width() / 2, item.height() / 2});
    }
    void ClickAt(QQuickItem const& item, QPointF at) {
        Settle();
        ASSERT_TRUE(item.isVisible() && item.isEnabled()) << item.objectName().toStdString();
        QTest::mouseClick(&window_, Qt::LeftButton, {}, item.mapToScene(at).toPoint());
        Settle();
    }
    QQuickWindow& Window() { return window_; }
    bool Has(char const* name) {
        Settle();
        return Find(*window_.contentItem(), QString::fromLatin1(name)) != nullptr;
    }
    /// Into what has the focus, over what is there.
    void Type(char const* text) {
        QTest::keyClick(&window_, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(&window_, Qt::Key_Delete);
        for (char const* c = text; *c; ++c) QTest::keyClick(&window_, *c);
        Settle();
    }
    static testing::AssertionResult Until(std::function<bool()> const& holds) {
        constexpr int Milliseconds = 30'000;
        return QTest::qWaitFor(holds, Milliseconds) ? testing::AssertionSuccess()
                                                    : testing::AssertionFailure() << "it has not come";
    }
    std::string TextOf(char const* name) {
        Settle();
        return Item(name).property("text").toString().toStdString();
    }

private:
    static QQuickItem* Find(QQuickItem const& parent, QString const& name, bool isSeen = false) {
        for (auto* child : parent.childItems()) {
            if (child->objectName() == name && (child->isVisible() || !isSeen)) return child;
            if (auto* const found = Find(*child, name, isSeen)) return found;
        }
        return nullptr;
    }

    QQuickWindow window_;
    std::unique_ptr<QObject> object_;
    QQuickItem* item_ = nullptr;
};
