#pragma once

// Included by most tests.

#include "Tests/Helpers/ManualClock.h"
#include "Tests/Helpers/RunTask.h"
#include "Tests/Helpers/TemporaryHome.h"

#include <gtest/gtest.h>
