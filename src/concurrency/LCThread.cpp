#include "concurrency/LCThread.h"

LCThread::~LCThread() = default;
