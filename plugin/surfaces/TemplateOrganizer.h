#pragma once

#include <QtCore/QAbstractListModel>

#include "plugin/surfaces/TemplateStore.h"

/// The fields of a template while somebody settles their order, names, first values and checks. Nothing of it counts
/// before it is saved.
class TemplateOrganizer : public QAbstractListModel {
    Q_OBJECT
    Q_PROPERTY(QString name READ name CONSTANT)
    Q_PROPERTY(bool isReady READ isReady NOTIFY noticeChanged)  ///< the fields are there
    Q_PROPERTY(int count READ count NOTIFY noticeChanged)
    Q_PROPERTY(bool isChanged READ isChanged NOTIFY noticeChanged)  ///< and not saved
    Q_PROPERTY(QString notice READ notice NOTIFY noticeChanged)
    Q_PROPERTY(bool isTrouble READ isTrouble NOTIFY noticeChanged)

public:
    TemplateOrganizer(TemplateStore store, StoredFormat format);

    QString name() const;
    bool isReady() const { return isReady_; }
    int count() const { return static_cast<int>(fields_.size()); }
    bool isChanged() const { return fields_ != saved_; }
    QString notice() const { return notice_; }
    bool isTrouble() const { return isTrouble_; }

    /// By the names of the roles: "name", "value", "isRequired", "digitsOnly", "least", "most".
    Q_INVOKABLE void change(int row, QString const& what, QVariant const& value);
    Q_INVOKABLE void move(int row, int to);
    /// False if it is not saved, with the reason as notice.
    Q_INVOKABLE bool save();
    /// Back to what is saved.
    Q_INVOKABLE void undoAll();

    int rowCount(QModelIndex const& parent = {}) const override;
    QVariant data(QModelIndex const& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void noticeChanged();
    void saved();

private:
    enum Role { Number = Qt::UserRole, Name, Value, IsRequired, DigitsOnly, Least, Most, Fault };

    void TakeFields(FieldSettings::Settled const& settled, std::string const& error);
    void Tell(QString const& notice, bool isTrouble);

    TemplateStore store_;
    StoredFormat format_;
    bool isReady_ = false;
    std::vector<TemplateField> fields_;
    std::vector<TemplateField> saved_;
    QString notice_;
    bool isTrouble_ = false;
};
