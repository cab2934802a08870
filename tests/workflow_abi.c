/* A C caller of the workflow library, linked against it as the module is:
 * the five functions are imported by name and called with the module's
 * argument lists, null texts included. There is no database connection in
 * this process, so each must refuse with its "no connection" code (and
 * getsysdate give 0) rather than crash. Prints one line per call. */
#include <stdio.h>

#include "Prj_zt_pubfun.h"

static int failures = 0;

static void expect(const char* call, long got, long want) {
    printf("%s=%ld\n", call, got);
    if (got != want) {
        fprintf(stderr, "%s: got %ld, expected %ld\n", call, got, want);
        ++failures;
    }
}

int main(void) {
    const TDateTime at = 45474.5; /* 2024-07-01 12:00 */
    TDateTime now = getsysdate();
    printf("getsysdate=%.1f\n", now);
    if (now != 0.0) {
        fprintf(stderr, "getsysdate without a connection: %f\n", now);
        ++failures;
    }
    expect("tryfristywx", tryfristywx("0000000001", "401", "40101", "01", "0100000001", "一般", "01001", at,
                                      "张三", "城关镇", 0, 0), WF_NO_CONNECTION);
    expect("tryfristywx_null", tryfristywx(NULL, NULL, NULL, NULL, NULL, NULL, NULL, 0, NULL, NULL, 0, 0),
           WF_NO_CONNECTION);
    expect("fristywx", fristywx("0000000001", "401", "40101", "01", "0100000001", "一般", "01001", at,
                                "张三", "城关镇", 0, 0), WF_NO_CONNECTION);
    expect("lcsend", lcsend("0000000001", "40102", at, "01001", 0), WF_NO_CONNECTION);
    expect("lcsend_null", lcsend(NULL, NULL, at, NULL, 0), WF_NO_CONNECTION);
    expect("SendGzdMess", SendGzdMess("0000000001"), WF_NO_CONNECTION);
    expect("SendGzdMess_null", SendGzdMess(NULL), WF_NO_CONNECTION);
    return failures == 0 ? 0 : 1;
}
