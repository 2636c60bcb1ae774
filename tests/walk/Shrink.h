#pragma once

#include "walk/Course.h"

#include <algorithm>
#include <functional>
#include <iterator>

namespace walk {

inline Course Without(const Course& course, std::size_t begin, std::size_t count) {
    Course rest;
    for (std::size_t i = 0; i < course.size(); ++i)
        if (i < begin || i >= begin + count)
            rest.push_back(course[i]);
    return rest;
}

/// Leaves parts out of a course that fails, halves first and single steps last, as long as what is
/// left still fails. When the time is up, what has been found so far counts.
inline Course Shrink(Course course, const std::function<bool(const Course&)>& fails,
                     const std::function<bool()>& timeIsUp) {
    std::size_t part = (course.size() + 1) / 2;
    bool shorter = false;
    for (std::size_t begin = 0; part > 0 && !timeIsUp();) {
        if (begin >= course.size()) { // once more where single steps went: others may go now
            if (part == 1 && !shorter)
                break;
            part = std::max<std::size_t>(part / 2, 1);
            begin = 0;
            shorter = false;
        } else if (Course rest = Without(course, begin, part); fails(rest)) {
            course = std::move(rest);
            shorter = true;
        } else {
            begin += part;
        }
    }
    return course;
}

} // namespace walk
