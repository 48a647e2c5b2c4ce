// EACH(m, p, a, b, ..) is m(p, a) m(p, b) ..
#pragma once

#define OPEN ()
#define SCAN(...) SCAN_3(SCAN_3(SCAN_3(SCAN_3(__VA_ARGS__))))
#define SCAN_3(...) SCAN_2(SCAN_2(SCAN_2(SCAN_2(__VA_ARGS__))))
#define SCAN_2(...) SCAN_1(SCAN_1(SCAN_1(SCAN_1(__VA_ARGS__))))
#define SCAN_1(...) __VA_ARGS__
#define EACH(m, p, ...) SCAN(EACH_(m, p, __VA_ARGS__))
#define EACH_(m, p, a, ...) m(p, a) __VA_OPT__(EACH_AGAIN OPEN(m, p, __VA_ARGS__))
#define EACH_AGAIN() EACH_
