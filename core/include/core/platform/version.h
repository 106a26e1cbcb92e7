// The version of the library; the build reads it from here.
#pragma once

#define ORBCORE_VERSION "1.0.0"
