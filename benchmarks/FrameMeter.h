// An application that measures what each frame of a window costs.
#pragma once

#include <QApplication>
#include <chrono>
#include <functional>
#include <vector>

class QWidget;

// Processor milliseconds of all threads.
struct FrameCosts
{
    std::vector<double> frames;

    double median() const { return quantile(0.5); }
    double quantile(double share) const; // nearest rank; 0 without frames
};

class FrameMeter : public QApplication
{
public:
    FrameMeter(int &argc, char **argv);

    bool notify(QObject *receiver, QEvent *event) override;

    // Runs `action` and everything that it leads to, `count` times. A frame's cost is all that the program did between the
    // end of the frame before, or the action, and its own end.
    FrameCosts measure(QWidget &window, int count, const std::function<void(int)> &action);

    // The same for what goes on for a while: after each action the program runs for `time`.
    FrameCosts measureFor(QWidget &window,
                          int count,
                          std::chrono::milliseconds time,
                          const std::function<void(int)> &action);

private:
    void endFrame();

    QWidget *watched = nullptr;
    double mark = 0;
    FrameCosts costs;
};

// Lets the program run for a while.
void runFor(std::chrono::milliseconds time);
