// Every object of the library that is built at load stands here, in the order in which they come up; they go
// down in reverse. The priority puts them before the objects of an application that links the library
// statically.

#if defined(__GNUC__)
#define QRTCL_AT_LOAD __attribute__((init_priority(200)))
#else
#define QRTCL_AT_LOAD
#endif

// 1. The names of the bar code types.

// 2. The colour index table of the drawing format.

// 3. The correction of the application's clock.

// 4. The debug message channel.

// 5. The keyboard dispatcher.

// 6. The timer table.

// 7. Its lock.
