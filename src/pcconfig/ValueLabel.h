// The value of one row.
#pragma once

#include <QLabel>

// Plain text that wraps, that the mouse can select, and that the keyboard can, too: Tab comes to it and selects it whole,
// and from there on the usual keys move, extend and copy. GUI thread.
//
// Of a text that no row is made for, above 4096 characters, only the beginning is painted and nothing can be selected:
// the toolkit would lay out all of it anew for each frame. text() has it whole.
class ValueLabel : public QLabel
{
    Q_OBJECT

public:
    ValueLabel(const QString &value, QWidget *parent);

    void showValue(const QString &value);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;

private:
    bool isExcessive() const;
    QString beginning() const;
};
