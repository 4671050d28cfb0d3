// What a screen reader learns of a NavButton: a page tab, its name, whether its page is the current one, and that it
// can be pressed.
#pragma once

#include <QAccessibleWidget>

class NavButton;

class NavButtonAccessible : public QAccessibleWidget
{
public:
    // Makes the toolkit use this class for every NavButton. Harmless when repeated.
    static void install();

    explicit NavButtonAccessible(NavButton *button);

    QAccessible::State state() const override;
    QStringList actionNames() const override;
    void doAction(const QString &name) override;
    QStringList keyBindingsForAction(const QString &name) const override;

private:
    NavButton *button() const;
};
