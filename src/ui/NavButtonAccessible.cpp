#include "ui/NavButtonAccessible.h"

#include "ui/NavButton.h"

namespace {

QAccessibleInterface *createInterface(const QString & /*className*/, QObject *object)
{
    auto *button = qobject_cast<NavButton *>(object);
    return button == nullptr ? nullptr : new NavButtonAccessible(button);
}

} // namespace

void NavButtonAccessible::install()
{
    static const bool kInstalled = [] {
        QAccessible::installFactory(createInterface);
        return true;
    }();
    Q_UNUSED(kInstalled)
}

NavButtonAccessible::NavButtonAccessible(NavButton *button)
    : QAccessibleWidget(button, QAccessible::PageTab)
{ }

NavButton *NavButtonAccessible::button() const
{
    return qobject_cast<NavButton *>(object());
}

QAccessible::State NavButtonAccessible::state() const
{
    QAccessible::State state = QAccessibleWidget::state();
    state.selectable = true;
    state.selected = button()->isActive();
    return state;
}

QStringList NavButtonAccessible::actionNames() const
{
    return QStringList{pressAction()} + QAccessibleWidget::actionNames();
}

void NavButtonAccessible::doAction(const QString &name)
{
    if (name == pressAction()) {
        emit button()->clicked();
    } else {
        QAccessibleWidget::doAction(name);
    }
}

QStringList NavButtonAccessible::keyBindingsForAction(const QString &name) const
{
    return name == pressAction() ? QStringList{QStringLiteral("Space"), QStringLiteral("Return")}
                                 : QAccessibleWidget::keyBindingsForAction(name);
}
