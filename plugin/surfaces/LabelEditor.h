#pragma once

#include <QtCore/QObject>
#include <QtCore/QPointF>
#include <QtCore/QRectF>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QThread>
#include <QtCore/QVariantList>
#include <QtCore/QVariantMap>
#include <QtGui/QImage>
#include <deque>
#include <functional>
#include <memory>
#include <vector>

#include "library/forms/EditorDesk.h"
#include "library/forms/FieldGroups.h"

class TQTWSProcessorInterface;

/// What the surfaces of the editor see of the stored format that is open: its page, the fields that are selected, and
/// what can be changed of them. Lives on the main thread; labels are drawn on a thread of its own, which is there from
/// the first look at a format on. Changes are made in the order of the calls.
class LabelEditor : public QObject {
    Q_OBJECT
    Q_PROPERTY(QStringList formats READ formats NOTIFY formatsChanged)  ///< stored ones, as "E:ORDER.ZPL"
    Q_PROPERTY(bool isOpen READ isOpen NOTIFY pageChanged)
    Q_PROPERTY(bool isBusy READ isBusy NOTIFY busyChanged)  ///< something is under way
    Q_PROPERTY(QString name READ name NOTIFY pageChanged)   ///< of the format, as above
    Q_PROPERTY(bool isChanged READ isChanged NOTIFY pageChanged)
    Q_PROPERTY(bool canUndo READ canUndo NOTIFY pageChanged)
    Q_PROPERTY(bool canRedo READ canRedo NOTIFY pageChanged)
    Q_PROPERTY(QImage picture READ picture NOTIFY pageChanged)
    Q_PROPERTY(int fieldCount READ fieldCount NOTIFY pageChanged)
    Q_PROPERTY(QStringList findings READ findings NOTIFY pageChanged)  ///< a sentence each
    Q_PROPERTY(QString problem READ problem NOTIFY problemChanged)     ///< why the last change was refused

    Q_PROPERTY(QList<int> selection READ selection NOTIFY selectionChanged)  ///< indices of fields
    Q_PROPERTY(QVariantList boxes READ boxes NOTIFY selectionChanged)        ///< of these, in dots of the picture
    /// Of the first field that is selected and has it: kind, description, number, prompt, text, isBlock, letter,
    /// fontHeight, fontWidth, height, countsModules, module, ratio, line, width, tall, thickness. Absent is what none
    /// has. Sizes are dots of the label.
    Q_PROPERTY(QVariantMap field READ field NOTIFY selectionChanged)

public:
    explicit LabelEditor(TQTWSProcessorInterface const& printer);
    ~LabelEditor() override;

    QStringList formats() const { return formats_; }
    bool isOpen() const { return shown_.page != nullptr; }
    bool isBusy() const { return isBusy_; }
    QString name() const { return shown_.name; }
    bool isChanged() const { return shown_.isChanged; }
    bool canUndo() const { return shown_.canUndo; }
    bool canRedo() const { return shown_.canRedo; }
    QImage picture() const { return picture_; }
    int fieldCount() const;
    QStringList findings() const;
    QString problem() const { return problem_; }
    QList<int> selection() const { return selection_; }
    QVariantList boxes() const;
    QVariantMap field() const;

    Q_INVOKABLE void refresh();
    Q_INVOKABLE void open(QString const& name);
    Q_INVOKABLE void close();
    Q_INVOKABLE void save(bool isSure = false);
    /// `name` without the device, with or without ".ZPL".
    Q_INVOKABLE void saveAs(QString const& device, QString const& name, bool isSure = false);
    Q_INVOKABLE void print();
    Q_INVOKABLE void undo();
    Q_INVOKABLE void redo();

    /// The field at a point of the picture, within `reach` dots: the smallest, or the next beneath the one that is
    /// selected. -1 if there is none.
    Q_INVOKABLE int fieldAt(QPointF dot, double reach, bool beneath = false) const;
    /// One that is selected, at that point.
    Q_INVOKABLE int selectedAt(QPointF dot, double reach) const;
    Q_INVOKABLE void select(int field);
    Q_INVOKABLE void toggle(int field);
    Q_INVOKABLE void selectAll();
    Q_INVOKABLE void selectNone();
    /// The field before (-1) or behind (1) the one that is selected.
    Q_INVOKABLE void selectBeside(int step);

    /// Moves what is selected by a way on the picture from where the drag began: `startDrag` begins one.
    Q_INVOKABLE void startDrag();
    Q_INVOKABLE void drag(double right, double down);
    /// By dots of the label, as seen on the page.
    Q_INVOKABLE void nudge(int right, int down);
    /// Sets what `field` calls so of all that are selected and have it.
    Q_INVOKABLE void change(QString const& what, QVariant const& value);
    /// left, right, top, bottom, across or down: the middles.
    Q_INVOKABLE void align(QString const& side);
    Q_INVOKABLE void distribute(bool across);
    Q_INVOKABLE void remove();
    Q_INVOKABLE void duplicate();

Q_SIGNALS:
    void formatsChanged();
    void pageChanged();
    void busyChanged();
    void selectionChanged();
    /// Other fields are selected, or a step was taken back: what was typed is of no interest any more.
    void selectionMoved();
    void problemChanged();
    /// One or two sentences for people.
    void told(QString words);
    /// What saving needs a yes for; `save` or `saveAs` again with `isSure` follows it.
    void asked(QString words);
    void saved();

private:
    /// As of the last task that is done.
    struct Shown {
        std::shared_ptr<EditedPage const> page;
        QString name;
        bool isChanged = false;
        bool canUndo = false;
        bool canRedo = false;
    };
    struct Outcome {
        Shown shown;
        QString problem;
        QString told;
        QString asked;
        bool isMoved = false;        ///< for selectionMoved
        std::function<void()> then;  ///< on the main thread; may be empty
    };
    using Work = std::function<void(EditorDesk&, Outcome&)>;
    using Change = std::function<void(FieldEdits&)>;
    struct Task {
        Work work;
        QString key;  ///< of those that may replace each other while they wait; empty for none
    };

    void Ask(Work work, QString const& key = {});
    void AskNext();
    void Take(Outcome outcome);
    void Edit(Change change, QString const& key = {});
    void Move(std::vector<FieldShift> const& shifts, QString const& key);
    void SetSelection(QList<int> selection);
    bool HasWaitingFields() const;
    void Store(StoredFormat const& format, bool isSure);
    DrawnFormat const* Drawn() const { return shown_.page ? &shown_.page->drawn : nullptr; }
    QRectF BoxOf(int field) const;
    std::vector<std::size_t> Movable() const;

    TQTWSProcessorInterface const& printer_;
    QThread thread_;
    QObject worker_;   ///< lives on that thread
    EditorDesk desk_;  ///< of that thread
    std::deque<Task> tasks_;
    bool isBusy_ = false;
    bool isReshaping_ = false;  ///< what is under way may give fields other indices

    QStringList formats_;
    Shown shown_;
    QImage picture_;
    QString problem_;
    QList<int> selection_;
    unsigned step_ = 0;  ///< another one for each run of changes that is undone as one
    QString nudgeKey_;   ///< of the nudges that are undone as one
    QPoint nudged_;      ///< by these so far, in dots of the label
};
