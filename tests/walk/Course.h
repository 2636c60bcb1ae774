#pragma once

#include <QElapsedTimer>
#include <QFile>
#include <QString>

#include <deque>
#include <string>
#include <vector>

/// One thing that is done or happens, told by what it touches: it means the same after steps before
/// it were left out.
struct Step {
    QString action;     ///< "press", "write", "instrument"...
    QString window{};   ///< in which window or box; empty where it has none
    QString control{};  ///< what is touched there
    QString argument{}; ///< the text written, the key pressed...
    int pause_ms = 0;   ///< after the step before

    bool operator==(const Step&) const = default;
};

using Course = std::vector<Step>;

/// A line of a course: fields between tabs.
QString LineOf(const Step& step);
Step StepOf(const QString& line);

/// For people.
std::string Told(const Step& step);

/// The steps of the file; empty where it cannot be read.
Course ReadCourse(const QString& file);
void WriteCourse(const QString& file, const Course& course);

/// What has been done so far. Each step stands in a file before it is done, so that the course of a
/// walk that ends in a crash is known.
class CourseNotes {
public:
    /// Without a name nothing is kept in a file.
    explicit CourseNotes(const QString& file);

    /// Sets the step's pause, and notes it.
    void Note(Step step);

    /// The last ones, oldest first, one line each.
    std::string LastSteps() const;
    int Count() const { return count_; }

private:
    QFile file_;
    QElapsedTimer sinceLast_;
    std::deque<Step> last_;
    int count_ = 0;
};

/// A walk as its starter asks for it: a course to be walked again or, where that is empty, a random
/// one, and where its steps and the rule that it breaks are told.
namespace walk {

inline constexpr const char* courseVariable = "VANTREL_WALK_COURSE";
inline constexpr const char* notesVariable = "VANTREL_WALK_NOTES";
inline constexpr const char* verdictVariable = "VANTREL_WALK_VERDICT";

std::deque<Step> CourseAsked();

/// Fails the test, and tells the starter which rule was broken; the first one counts.
void Broken(const QString& rule, const std::string& how);

/// Tells the rule without failing, for one that ends the process next.
void TellRule(const QString& rule);

} // namespace walk
