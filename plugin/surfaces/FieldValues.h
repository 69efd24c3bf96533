#pragma once

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QVariantMap>
#include <functional>

#include "library/forms/FieldEdits.h"

/// What can be changed of fields, in the words and values that surfaces use; LabelEditor lists them.
namespace FieldValues {

/// Of several fields the value of the first that has one.
QVariantMap Of(EditedPage const& page, QList<int> const& fields);

/// What sets one value of all fields that have it; empty if none has, or the value is of no use.
std::function<void(FieldEdits&)> Change(EditedPage const& page, QList<int> const& fields, QString const& what,
                                        QVariant const& value);

}  // namespace FieldValues
