// What every header of kiln needs: the mark of an exported name.
#pragma once

// Exported from kiln.so. All else in it is hidden. On an abstract class it exports the type record,
// so that implementations in any library are the same type to `dynamic_cast` and the sanitizers.
#define ORB_KILN_API __attribute__((visibility("default")))
