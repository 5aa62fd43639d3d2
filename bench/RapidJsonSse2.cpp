// RapidJSON once more, with the SSE2 code that it leaves out unless told otherwise.

#ifdef __SSE2__
#define RAPIDJSON_SSE2
#endif

// A namespace of its own: the two builds of the same templates must not meet in the linker.
#define RAPIDJSON_NAMESPACE rapidjsonSse2
#define RAPIDJSON_NAMESPACE_BEGIN namespace rapidjsonSse2 {
#define RAPIDJSON_NAMESPACE_END }

#define BENCH_RAPIDJSON_JOBS rapidJsonSse2Jobs
#define BENCH_RAPIDJSON_NAME "RapidJSON SSE2"

#include "RapidJson.cpp"
