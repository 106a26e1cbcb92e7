// Calls back from a frame of FRAME_SIZE bytes.
extern "C" __attribute__((visibility("default"))) void call_from_frame(void (*callback)(void*),
                                                                       void* argument) {
    [[maybe_unused]] volatile char frame[FRAME_SIZE];
    frame[0] = 0;
    callback(argument);
    frame[FRAME_SIZE - 1] = 0;
}
