#pragma once

#include "walk/built/Scene.h"

/// Does the steps of a course on the desktop: keys, pointer and wheel by the X server, texts and
/// what is not to be pointed at over the accessibility bus. A step whose control is not reached is
/// left out.
class BuiltHand {
public:
    BuiltHand(const ScreenReader& reader, QSize screen, QString files)
        : reader_(reader), screen_({}, screen), files_(std::move(files)) {}

    void Do(const Step& step, const Scene& scene) const;

private:
    void AnswerBox(const Step& step, const Scene& scene) const;
    void AnswerFileDialog(const Step& step, const Scene& scene) const;
    void Press(const SpokenControl& control) const;
    void Touch(const Step& step, const SpokenControl& control) const;
    void PointAt(const SpokenControl& control, const QString& button) const;
    void Resize(const Step& step, const Scene& scene) const;

    const ScreenReader& reader_;
    const QRect screen_;
    const QString files_;
};
