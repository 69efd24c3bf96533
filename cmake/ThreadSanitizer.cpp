// Linked into every program of Qt that the thread sanitizer watches: Qt itself is not built for it, so what Qt does
// between threads has to be told.
#include <dlfcn.h>
#include <sanitizer/tsan_interface.h>
#include <sched.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <QtCore/QObject>
#include <cstdarg>

namespace {

/// A call that one thread posts to another. Qt hands it over under a lock that the sanitizer does not see.
class HandedOver : public QtPrivate::QSlotObjectBase {
public:
    explicit HandedOver(QSlotObjectBase* call) : QSlotObjectBase(Run), call_(call) { __tsan_release(this); }

private:
    static void Run(int operation, QSlotObjectBase* base, QObject* receiver, void** arguments, bool* /*same*/) {
        __tsan_acquire(base);
        auto* const self = static_cast<HandedOver*>(base);
        if (operation == Call) {
            self->call_->call(receiver, arguments);
            // Whichever thread drops it last frees it.
            __tsan_release(base);
        }
        if (operation != Destroy) return;
        self->call_->destroyIfLastRef();
        delete self;
    }

    QSlotObjectBase* call_;
};

}  // namespace

extern "C" void AnnotateIgnoreWritesBegin(char const* file, int line);
extern "C" void AnnotateIgnoreWritesEnd(char const* file, int line);

// Stands in front of Qt's function of this name, and calls it. What that writes is Qt's own: the event and the list of
// events.
bool QMetaObject::invokeMethodImpl(QObject* object, QtPrivate::QSlotObjectBase* slot, Qt::ConnectionType type,
                                   void* result) {
    static auto const theirs = reinterpret_cast<decltype(&invokeMethodImpl)>(
        ::dlsym(RTLD_NEXT,
                "_ZN11QMetaObject16invokeMethodImplEP7QObjectPN9QtPrivate15QSlotObjectBaseEN2Qt"
                "14ConnectionTypeEPv"));
    if (type != Qt::QueuedConnection) return theirs(object, slot, type, result);
    auto* const call = new HandedOver(slot);
    AnnotateIgnoreWritesBegin(__FILE__, __LINE__);
    bool const isPosted = theirs(object, call, type, result);
    AnnotateIgnoreWritesEnd(__FILE__, __LINE__);
    return isPosted;
}

// QProcess starts a child in the memory of its parent. What the child does until it runs another program is then
// taken for the parent's, whose locks are not seen any more. Here the child has a memory of its own.
extern "C" int clone(int (*run)(void*), void* /*stack*/, int flags, void* argument, ...) noexcept {
    va_list rest;
    va_start(rest, argument);
    auto* const parentId = va_arg(rest, pid_t*);
    va_end(rest);
    long const id = ::syscall(SYS_clone, flags & ~(CLONE_VM | CLONE_VFORK), nullptr, parentId, nullptr, 0);
    if (id == 0) ::_exit(run(argument));
    return static_cast<int>(id);
}

// What Qt's own locks guard, which the sanitizer does not see; nothing of it is reached by code of this tree.
extern "C" char const* __tsan_default_suppressions();
extern "C" char const* __tsan_default_suppressions() {
    return "race:QArrayData::\n"             // the list of posted events
           "race:QObject::moveToThread\n"    // data of a thread, made by one and freed by another
           "race:QWaitCondition::\n"         // goes when it has woken the thread of QML
           "race:QThreadPoolPrivate::\n"     // pictures are drawn by threads of a pool
           "race:QRunnable::\n"              // which are given this
           "called_from_lib:libQt6Gui.so\n"  // and free what the surface has made for them
           "called_from_lib:libQt6Quick.so\n";
}
