// A progress bar whose text can be read at every value.
#pragma once

#include <QProgressBar>

// The style draws one text colour over both the dark groove and the bright chunk. Here each column of the text is dark
// or light, whichever contrasts more with what is behind it. GUI thread.
class ReadableBar : public QProgressBar
{
    Q_OBJECT

public:
    explicit ReadableBar(QWidget *parent);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QImage textColors(const QStyleOptionProgressBar &option) const;
};
