// A library without any entry point.
namespace {
[[maybe_unused]] int nothing;
}
