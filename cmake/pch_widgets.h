#pragma once

#include "pch_core.h"

#include <QtWidgets>
