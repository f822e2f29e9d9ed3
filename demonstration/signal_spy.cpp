#include "demonstration/signal_spy.h"

#include <QAbstractItemModel>
#include <QDateTime>
#include <QMetaProperty>
#include <QScopedValueRollback>
#include <QVariant>

#include <algorithm>
#include <utility>

namespace {

thread_local QString beingRead;

QString textOf(const QVariant &value);

QString textOf(const QAbstractItemModel &model)
{
    QString text;
    const QHash<int, QByteArray> names = model.roleNames();
    QList<int> roles = names.keys();
    std::sort(roles.begin(), roles.end());
    for (int row = 0; row < model.rowCount(); ++row) {
        QStringList parts;
        for (const int role : qAsConst(roles)) {
            const QVariant value = model.index(row, 0).data(role);
            if (value.isValid())
                parts += QString::fromLatin1(names[role]) + ' ' + textOf(value);
        }
        text += '[' + parts.join(QStringLiteral(", ")) + ']';
    }
    return text.isEmpty() ? QStringLiteral("no rows") : text;
}

QString textOf(const QVariant &value)
{
    if (const auto *model = qobject_cast<QAbstractItemModel *>(value.value<QObject *>()))
        return textOf(*model);
    if (value.type() == QVariant::String)
        return '"' + value.toString() + '"';
    if (value.type() == QVariant::DateTime)
        return value.toDateTime().isValid() ? QStringLiteral("a time") : QStringLiteral("no time");
    return value.canConvert<QString>() ? value.toString() : QString::fromLatin1(value.typeName());
}

QString textOf(const QMetaProperty &property, const QVariant &value)
{
    if (property.isEnumType())
        return QString::fromLatin1(property.enumerator().valueToKey(value.toInt()));
    return textOf(value);
}

} // namespace

SignalSpy::SignalSpy(QObject &object, const QString &name, const QStringList &unread,
                     QObject *parent)
    : QObject(parent), object_(object), name_(name), unread_(unread)
{
}

QString SignalSpy::reading()
{
    return beingRead;
}

void SignalSpy::begin(std::function<void(const QString &)> say)
{
    say_ = std::move(say);
    sayChanges();
    // What stands behind the last of our own methods is said in qt_metacall().
    const QMetaObject &meta = *object_.metaObject();
    for (int i = QObject::staticMetaObject.methodCount(); i < meta.methodCount(); ++i) {
        if (meta.method(i).methodType() == QMetaMethod::Signal)
            QMetaObject::connect(&object_, i, this, QObject::staticMetaObject.methodCount() + i,
                                 Qt::DirectConnection);
    }
}

int SignalSpy::qt_metacall(QMetaObject::Call call, int id, void **arguments)
{
    id = QObject::qt_metacall(call, id, arguments);
    if (id < 0 || call != QMetaObject::InvokeMetaMethod)
        return id;
    onSignal(object_.metaObject()->method(id), arguments);
    return -1;
}

void SignalSpy::onSignal(const QMetaMethod &signal, void **arguments)
{
    QStringList parts;
    for (int i = 0; i < signal.parameterCount(); ++i)
        parts += textOf(QVariant(signal.parameterType(i), arguments[i + 1]));
    say_(name_ + '.' + QString::fromLatin1(signal.name()) + '(' + parts.join(QStringLiteral(", ")) +
         ')');
    sayChanges();
}

void SignalSpy::sayChanges()
{
    const QString rows = QStringLiteral("rows");
    const QMetaObject &meta = *object_.metaObject();
    for (int i = QObject::staticMetaObject.propertyCount(); i < meta.propertyCount(); ++i) {
        const QMetaProperty property = meta.property(i);
        const QString called = QString::fromLatin1(property.name());
        if (unread_.contains(called))
            continue;
        QString text;
        {
            const QScopedValueRollback<QString> now(beingRead, called);
            text = textOf(property, property.read(&object_));
        }
        sayIfNew(called, text);
    }
    const auto *const model = qobject_cast<const QAbstractItemModel *>(&object_);
    if (model && !unread_.contains(rows))
        sayIfNew(rows, textOf(*model));
}

void SignalSpy::sayIfNew(const QString &called, const QString &text)
{
    if (values_.contains(called) && values_[called] == text)
        return;
    values_[called] = text;
    say_("  " + name_ + '.' + called + " = " + text);
}
