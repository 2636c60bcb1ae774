#include "walk/Course.h"

#include <QStringList>
#include <gtest/gtest.h>

namespace {

constexpr std::size_t stepsTold = 60;

QString Escaped(QString field) {
    return field.replace('\\', "\\\\").replace('\t', "\\t").replace('\n', "\\n");
}

QString Unescaped(const QString& field) {
    QString text;
    for (qsizetype i = 0; i < field.size(); ++i) {
        if (field[i] != '\\' || i + 1 == field.size()) {
            text += field[i];
            continue;
        }
        const QChar next = field[++i];
        text += next == 't' ? QChar('\t') : next == 'n' ? QChar('\n') : next;
    }
    return text;
}

} // namespace

QString LineOf(const Step& step) {
    QStringList fields = {QString::number(step.pause_ms)};
    for (const QString& field : {step.action, step.window, step.control, step.argument})
        fields << Escaped(field);
    return fields.join('\t');
}

Step StepOf(const QString& line) {
    const QStringList fields = line.split('\t');
    const auto field = [&fields](int index) { return Unescaped(fields.value(index)); };
    return {field(1), field(2), field(3), field(4), field(0).toInt()};
}

std::string Told(const Step& step) {
    QString text = step.action;
    if (!step.control.isEmpty())
        text += " " + step.control;
    if (!step.argument.isEmpty())
        text += " \"" + step.argument + "\"";
    if (!step.window.isEmpty())
        text += " in \"" + step.window + "\"";
    return text.replace('\n', ' ').toStdString();
}

Course ReadCourse(const QString& name) {
    Course course;
    QFile file(name);
    if (name.isEmpty() || !file.open(QIODevice::ReadOnly))
        return course;
    const QStringList lines = QString::fromUtf8(file.readAll()).split('\n', Qt::SkipEmptyParts);
    for (const QString& line : lines)
        course.push_back(StepOf(line));
    return course;
}

void WriteCourse(const QString& name, const Course& course) {
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly))
        return;
    for (const Step& step : course)
        file.write((LineOf(step) + '\n').toUtf8());
}

CourseNotes::CourseNotes(const QString& file) : file_(file) {
    EXPECT_TRUE(file.isEmpty() || file_.open(QIODevice::WriteOnly)) << file.toStdString();
    sinceLast_.start();
}

void CourseNotes::Note(Step step) {
    step.pause_ms = static_cast<int>(sinceLast_.restart());
    if (file_.isOpen()) {
        file_.write((LineOf(step) + '\n').toUtf8());
        file_.flush();
    }
    ++count_;
    last_.push_back(std::move(step));
    if (last_.size() > stepsTold)
        last_.pop_front();
}

std::string CourseNotes::LastSteps() const {
    std::string text;
    int number = count_ - static_cast<int>(last_.size());
    for (const Step& step : last_)
        text += "\n  " + std::to_string(++number) + ": " + Told(step);
    return text;
}

std::deque<Step> walk::CourseAsked() {
    const Course course = ReadCourse(qEnvironmentVariable(courseVariable));
    return {course.begin(), course.end()};
}

void walk::TellRule(const QString& rule) {
    QFile verdict(qEnvironmentVariable(verdictVariable));
    if (!verdict.fileName().isEmpty() && !verdict.exists() && verdict.open(QIODevice::WriteOnly))
        verdict.write(rule.toUtf8());
}

void walk::Broken(const QString& rule, const std::string& how) {
    TellRule(rule);
    ADD_FAILURE() << "broken: " << rule.toStdString() << "\n" << how;
}
