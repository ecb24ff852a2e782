#pragma once

#include <QObject>

QT_BEGIN_NAMESPACE
class QDBusVariant;
QT_END_NAMESPACE

namespace tarvel4 {

/**
 * What the desktop's portal says about its scheme: with some desktops the only one who does. It is
 * asked without waiting, so that a slow one, or none, costs the start nothing.
 */
class PortalScheme : public QObject
{
    Q_OBJECT

public:
    explicit PortalScheme(QObject *parent = nullptr);

Q_SIGNALS:
    /** The user wants it dark, or wants it light or whichever. Never where there is no portal. */
    void told(bool isDark);

private Q_SLOTS:
    void takeChange(const QString &group, const QString &key, const QDBusVariant &value);
};

} // namespace tarvel4
