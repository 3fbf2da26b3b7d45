// The language's basic types, as on Apple silicon: https://developer.apple.com/documentation/objectivec
#pragma once

#include <stddef.h>
#include <stdint.h>

typedef struct objc_selector* SEL;
typedef bool BOOL;
typedef void (*IMP)(void);
@class Protocol;

#define YES __objc_yes
#define NO __objc_no
#define nil nullptr
#define Nil nullptr

// Makes GNUstep's headers include objc/runtime.h.
#define __GNU_LIBOBJC__ 20110608
