// The activity of a Mac's own. Not tried on one yet.
#include "process/ProcessActivity.h"

#import <Foundation/Foundation.h>

void beginActivity() {
    // Kept for good: an activity ends with its token.
    static id<NSObject> token = nil;
    token = [[[NSProcessInfo processInfo] beginActivityWithOptions:NSActivityBackground
                                                            reason:@"Faderhall is running"] retain];
}
