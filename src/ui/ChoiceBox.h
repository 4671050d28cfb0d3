// A combo box that can be told from a text field.
#pragma once

#include "ui/PageControl.h"

#include <QComboBox>

// A style sheet that sets the look of the drop-down button takes its arrow away; here it comes back. The popup marks its
// current row with the highlight in every style. GUI thread.
class ChoiceBox : public PageControl<QComboBox>
{
public:
    explicit ChoiceBox(QWidget *parent);

protected:
    void paintEvent(QPaintEvent *event) override;
};
