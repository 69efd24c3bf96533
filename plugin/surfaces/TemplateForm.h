#pragma once

#include <QtCore/QObject>
#include <QtCore/QStringList>
#include <QtCore/QVariantList>
#include <QtGui/QImage>

#include <optional>
#include <string>
#include <vector>

#include "plugin/surfaces/TemplateStore.h"

/// A template that somebody fills in: its fields with what is typed, the label as it would print, and its printing.
class TemplateForm : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString name READ name CONSTANT)
    Q_PROPERTY(QString fullName READ fullName CONSTANT)
    /// Each with "number", "name", "digitsOnly", "isRequired" and "most"; values and faults stand beside it, so that
    /// typing changes nothing here.
    Q_PROPERTY(QVariantList fields READ fields NOTIFY fieldsChanged)
    Q_PROPERTY(bool isReady READ isReady NOTIFY fieldsChanged)  ///< the fields are known
    Q_PROPERTY(QStringList values READ values NOTIFY valuesChanged)
    /// What is wrong with a value, a sentence; empty if nothing is.
    Q_PROPERTY(QStringList faults READ faults NOTIFY faultsChanged)
    Q_PROPERTY(int quantity READ quantity WRITE setQuantity NOTIFY quantityChanged)
    Q_PROPERTY(QImage picture READ picture NOTIFY pictureChanged)
    /// What there is to say of the label in the picture, each with its "text", a sentence, and "field", the index of
    /// the field that it is about, or -1.
    Q_PROPERTY(QVariantList findings READ findings NOTIFY pictureChanged)
    /// The picture is that of what is typed.
    Q_PROPERTY(bool isDrawn READ isDrawn NOTIFY isDrawnChanged)
    /// The format is not in the printer any more. What was typed, and the format itself, is still here.
    Q_PROPERTY(bool isGone READ isGone NOTIFY noticeChanged)
    Q_PROPERTY(bool isPrinting READ isPrinting NOTIFY noticeChanged)
    /// The newest thing to be told, a sentence, and whether it is bad.
    Q_PROPERTY(QString notice READ notice NOTIFY noticeChanged)
    Q_PROPERTY(bool isTrouble READ isTrouble NOTIFY noticeChanged)

public:
    TemplateForm(TemplateStore store, StoredFormat format);

    QString name() const;
    QString fullName() const { return QString::fromStdString(format_.FullName()); }
    QVariantList fields() const;
    QStringList values() const;
    QStringList faults() const;
    int quantity() const { return static_cast<int>(quantity_); }
    void setQuantity(int quantity);
    QImage picture() const { return page_.picture; }
    QVariantList findings() const;
    bool isReady() const { return isReady_; }
    bool isDrawn() const { return isDrawn_; }
    bool isGone() const { return isGone_; }
    bool isPrinting() const { return isPrinting_; }
    QString notice() const { return notice_; }
    bool isTrouble() const { return isTrouble_; }

    Q_INVOKABLE void setValue(int field, QString const& value);
    /// Back to what the fields begin with.
    Q_INVOKABLE void clear();
    /// False, with the faults shown, if a value is wrong.
    Q_INVOKABLE bool check();
    Q_INVOKABLE void print();
    /// Puts the format that is gone into the printer again.
    Q_INVOKABLE void storeAgain();
    /// Looks whether the format, or what is settled of its fields, has changed.
    void Look();

Q_SIGNALS:
    void fieldsChanged();
    void valuesChanged();
    void faultsChanged();
    void quantityChanged();
    void pictureChanged();
    void isDrawnChanged();
    void noticeChanged();

private:
    /// A finding, and the number of the field that it is about.
    struct NumberedFinding {
        std::string text;
        std::optional<unsigned> number;
    };
    /// What the drawing thread has read of the format.
    struct Found {
        std::vector<TemplateField> fields;
        std::vector<std::string> remarks;
        std::string error;
    };
    /// And what it has drawn.
    struct Page {
        QImage picture;
        std::vector<NumberedFinding> findings;
    };

    void ReadFields();
    void TakeFields(Found found);
    void Draw();
    static Page DrawPage(FormatDrawer& drawer, StoredFormat const& format, std::string const& bytes,
                         ValuesByNumber const& values);
    ValuesByNumber Values() const;
    void Tell(QString const& notice, bool isTrouble);

    TemplateStore store_;
    StoredFormat format_;
    std::string bytes_;
    std::vector<TemplateField> fields_;
    ValuesByNumber values_;  ///< as typed, by number; also of fields that a change of the format has taken away
    bool showsFaults_ = false;
    unsigned quantity_ = 1;
    Page page_;
    bool isReady_ = false;
    bool isDrawn_ = false;
    bool isGone_ = false;
    bool isPrinting_ = false;
    QString notice_;
    bool isTrouble_ = false;
};
