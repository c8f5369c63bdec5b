#pragma once

#include "pch_widgets.h"

#include <gtest/gtest.h>
