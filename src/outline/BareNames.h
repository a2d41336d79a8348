#pragma once

#include "outline/QueryText.h"
