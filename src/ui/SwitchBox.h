// A check box that looks like a switch.
#pragma once

#include "ui/PageControl.h"

#include <QCheckBox>

// The style sheet draws the rail, and fills it with the accent when the box is checked; a dark accent alone could not be
// told from an empty rail. So a knob stands at the right when checked, at the left when not. GUI thread.
class SwitchBox : public PageControl<QCheckBox>
{
public:
    SwitchBox(const QString &text, QWidget *parent);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QRectF knobRect() const;
};
