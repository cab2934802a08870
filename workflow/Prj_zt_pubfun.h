/* The workflow library Prj_zt_pubfun: the five functions the module imports.
 *
 * C ABI, callee-pops (__stdcall) on 32-bit Windows. Texts are zero-terminated
 * UTF-8; a null pointer is an empty text; the library never keeps or frees
 * them. Date-times are TDateTime: days since 1899-12-30, the time of day as
 * the fraction. Integer results: 0 = success, otherwise one of the WF_
 * codes below (docs/workflow.md says when each is given).
 *
 * Every call works on the host's Qt SQL connection named "Shdl", inside
 * whatever transaction the caller has open; the library never begins,
 * commits or rolls back a transaction of its own.
 */
#ifndef PRJ_ZT_PUBFUN_H
#define PRJ_ZT_PUBFUN_H

#include <stdint.h>

#if defined(_WIN32) && !defined(_WIN64)
#  define PRJ_ZT_CALL __stdcall
#else
#  define PRJ_ZT_CALL
#endif

#if defined(_WIN32)
#  if defined(PRJ_ZT_PUBFUN_BUILD)
#    define PRJ_ZT_API __declspec(dllexport)
#  else
#    define PRJ_ZT_API __declspec(dllimport)
#  endif
#elif defined(PRJ_ZT_PUBFUN_BUILD)
#  define PRJ_ZT_API __attribute__((visibility("default")))
#else
#  define PRJ_ZT_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

typedef double TDateTime;

/* Result codes. */
enum {
    WF_OK = 0,
    WF_NO_CONNECTION = 1,      /* no open connection named Shdl */
    WF_BAD_CDBH = 2,           /* document number empty or longer than 10 characters */
    WF_NO_UNIT = 3,            /* supply unit empty */
    WF_UNKNOWN_BUSINESS = 4,   /* business code not catalogued or not in force */
    WF_UNKNOWN_ITEM = 5,       /* item empty or not in the workflow definition */
    WF_ITEM_OF_OTHER_BUSINESS = 6, /* the item belongs to another business */
    WF_NOT_FIRST_ITEM = 7,     /* another item of the business leads to this one */
    WF_CASE_OPEN = 8,          /* the document is already in the workflow */
    WF_CASE_CLOSED = 9,        /* the document already went through the workflow */
    WF_NO_CASE = 10,           /* lcsend/SendGzdMess: the document is not in the workflow */
    WF_NOT_AT_ITEM = 11,       /* lcsend: the case stands at another item */
    WF_BAD_TIME = 12,          /* the date-time argument is not a finite number */
    WF_NO_RECIPIENT = 13,      /* SendGzdMess: no operator holds a post granting the item */
    WF_DATABASE_ERROR = 14,    /* a statement failed; nothing of the call remains */
    WF_INTERNAL_ERROR = 15     /* anything else; nothing of the call remains */
};

/* The database clock; 0 (1899-12-30) when there is no connection. */
PRJ_ZT_API TDateTime PRJ_ZT_CALL getsysdate(void);

/* The dry run of fristywx: the same checks, nothing written. */
PRJ_ZT_API int32_t PRJ_ZT_CALL tryfristywx(const char* cdbh, const char* ywdm, const char* ywxdm,
                                           const char* dw, const char* hh, const char* yxj,
                                           const char* czydm, TDateTime kssj, const char* hm,
                                           const char* yddz, int32_t reserved1, int32_t reserved2);

/* Starts the case `cdbh` of business `ywdm` at its first item `ywxdm`. */
PRJ_ZT_API int32_t PRJ_ZT_CALL fristywx(const char* cdbh, const char* ywdm, const char* ywxdm,
                                        const char* dw, const char* hh, const char* yxj,
                                        const char* czydm, TDateTime kssj, const char* hm,
                                        const char* yddz, int32_t reserved1, int32_t reserved2);

/* Sends the case from the item `ywxdm` it stands at to the next one. */
PRJ_ZT_API int32_t PRJ_ZT_CALL lcsend(const char* cdbh, const char* ywxdm, TDateTime fssj,
                                      const char* czydm, int32_t reserved);

/* Tells the operators who may work the case's current item that it waits. */
PRJ_ZT_API int32_t PRJ_ZT_CALL SendGzdMess(const char* cdbh);

/* The functions as pointer types, for callers that resolve them by name. */
typedef TDateTime(PRJ_ZT_CALL* getsysdate_fn)(void);
typedef int32_t(PRJ_ZT_CALL* fristywx_fn)(const char*, const char*, const char*, const char*,
                                          const char*, const char*, const char*, TDateTime,
                                          const char*, const char*, int32_t, int32_t);
typedef int32_t(PRJ_ZT_CALL* lcsend_fn)(const char*, const char*, TDateTime, const char*, int32_t);
typedef int32_t(PRJ_ZT_CALL* SendGzdMess_fn)(const char*);

#ifdef __cplusplus
}
#endif

#endif /* PRJ_ZT_PUBFUN_H */
