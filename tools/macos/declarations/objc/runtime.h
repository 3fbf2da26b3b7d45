// https://developer.apple.com/documentation/objectivec/objective-c-runtime
#pragma once

typedef struct objc_method* Method;
typedef struct objc_ivar* Ivar;
