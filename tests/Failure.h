#pragma once

#include "files/RunTimeError.h"

// What a routine says where it fails; empty where it does not.
template <typename Routine>
QString failureOf(Routine routine)
{
    try {
        routine();
    } catch (const quillmere::RunTimeError &error) {
        return error.message();
    }
    return {};
}
