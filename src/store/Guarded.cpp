// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/Guarded.h"

#include <utility>

namespace tessaranth {

namespace {

thread_local int depth = 0; // of the operations under way

enum class Telling { Each, First, Silent };
thread_local Telling telling = Telling::Each;

} // namespace

Operation::Operation() : m_isPart(depth > 0) { ++depth; }

void Operation::end() {
    if (std::exchange(m_isOpen, false))
        --depth;
}

Operation::Pause::Pause() : m_depth(std::exchange(depth, 0)) {}

Operation::Pause::~Pause() { depth = m_depth; }

ToldOnce::ToldOnce() : m_isOutermost(telling == Telling::Each) {
    if (m_isOutermost)
        telling = Telling::First;
}

ToldOnce::~ToldOnce() {
    if (m_isOutermost)
        telling = Telling::Each;
}

bool ToldOnce::mayTell() {
    const bool may = telling != Telling::Silent;
    if (telling == Telling::First)
        telling = Telling::Silent;
    return may;
}

} // namespace tessaranth
