/* zplhost.h: labels in the ZPL label language, drawn into memory.
 *
 *     zpl_desk *desk;
 *     zpl_label *label;
 *     zpl_page *page;
 *     if (zpl_desk_open(NULL, &desk) != ZPL_OK) fail(zpl_error());
 *     zpl_desk_feed(desk, stream, size);
 *     zpl_desk_finish(desk);
 *     while (zpl_desk_next_label(desk, &label) == ZPL_OK) {
 *         if (zpl_label_draw(label, 0, &page) == ZPL_OK) {
 *             ... zpl_page_rows(page), zpl_page_png(page, ...) ...
 *             zpl_page_free(page);
 *         }
 *         zpl_label_free(label);
 *     }
 *     zpl_desk_close(desk);
 *
 * Units: lengths are in dots of the printer unless said otherwise; a resolution is in dots per inch. Text is UTF-8 and
 * ends with a zero byte. What a function hands out by a pointer to const belongs to the object it came from, and lasts
 * until that object is freed, or until the call that says so.
 *
 * Threads: a desk and its labels belong to one thread at a time; different desks may work in different threads at once.
 * A page is a value of its own: any thread may read it, also at once with others, and it outlives its desk.
 *
 * Errors: a function that can fail gives a zpl_status. A failure leaves its output arguments as they were, and
 * zpl_error() says in one line what is wrong and what to do, until the next failure on this thread. No C++ exception
 * leaves a function.
 *
 * Stability: functions and enumerators are only added; structures that the caller fills bear their size.
 */
#ifndef ZPLHOST_H
#define ZPLHOST_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

#define ZPL_API __attribute__((visibility("default")))

/* The version of this interface, and of the library that is loaded. */
#define ZPL_VERSION_MAJOR 0
#define ZPL_VERSION_MINOR 1
ZPL_API char const* zpl_version(void); /* "0.1.0" */

typedef enum zpl_status {
    ZPL_OK = 0,
    ZPL_NONE = 1,      /* there is no further one */
    ZPL_MISUSED = 2,   /* an argument cannot be used */
    ZPL_TOO_SMALL = 3, /* the memory given does not hold it */
    ZPL_FAILED = 4     /* a file, the memory or the label: zpl_error() says which */
} zpl_status;

/* The sentence of this thread's last failure; empty if there was none. Lasts until the next one. */
ZPL_API char const* zpl_error(void);

typedef struct zpl_desk zpl_desk;   /* a printer in memory: settings, fonts, stored formats and graphics */
typedef struct zpl_label zpl_label; /* a finished format, frozen; draws any copy of itself */
typedef struct zpl_page zpl_page;   /* a drawn page of 1-bit pixels */

/* ---- Desks ---- */

/* What a desk is opened with. Set all by zpl_settings_init first. */
typedef struct zpl_settings {
    size_t size;                /* of this structure, in bytes */
    unsigned dpi;               /* that streams are made for: 203 (default), 300 or 600 */
    unsigned printer_dpi;       /* of the pages; 0 (default) for the same */
    double width_inches;        /* of the label part, 4; a stream that gives its own has the last word */
    double height_inches;       /* 6 */
    char const* storage_folder; /* of stored formats and graphics; NULL (default): they last as long as the desk */
    char const* fonts_folder;   /* font files are below; NULL (default): where the system has them */
    char const* const* fonts;   /* "L=FILE", ended by NULL: draws font L, or a named font, with a file; or NULL */
    char const* time;           /* "2026-03-31T14:05:00": lets the clock stand still; NULL (default): local time */
    char const* tag; /* "blank" or "epc=...,user=...": every label carries a tag; NULL (default): none does */
    int maps_fields; /* notes what stands where on each page, see zpl_page_fields; 0 by default */
} zpl_settings;

ZPL_API void zpl_settings_init(zpl_settings* settings);

/* Opens a desk; NULL takes the defaults. Close it by zpl_desk_close. */
ZPL_API zpl_status zpl_desk_open(zpl_settings const* settings, zpl_desk** desk);
/* Its labels keep what they need. NULL is allowed, as for all functions that free. */
ZPL_API void zpl_desk_close(zpl_desk* desk);

/* ---- Streams ---- */

/* Takes bytes of a stream, which may be cut anywhere, and interprets them as far as the end of a label; what stands
 * behind it waits until that label is taken. What is wrong with a stream is a finding and no failure. */
ZPL_API zpl_status zpl_desk_feed(zpl_desk* desk, void const* bytes, size_t size);
/* Ends the stream, if one is under way. The next call of zpl_desk_feed begins another one, with nothing left over but
 * what is stored, and its findings and places are counted anew. */
ZPL_API zpl_status zpl_desk_finish(zpl_desk* desk);
/* Takes the next label, and goes on with what waits; ZPL_NONE if there is none in what was fed. A label is drawn
 * cheapest right then; one that begins with the picture of the label before it (^MC) is drawn behind that. */
ZPL_API zpl_status zpl_desk_next_label(zpl_desk* desk, zpl_label** label);
/* What a person should know of the stream under way, or of the last one that ended: a JSON array, as "findings" of
 * docs/report.md. Findings about a page come when it is drawn. Lasts until the next call. */
ZPL_API zpl_status zpl_desk_findings(zpl_desk* desk, char const** json);
/* Takes what streams send back to their sender, as the answer to ~HS, while they are read, and what a label asks for
 * (^HV) when its copies are drawn for the first time; NULL, as at first, drops it. `take` lets no exception out, and
 * does not call the desk or its labels. */
ZPL_API zpl_status zpl_desk_on_answer(zpl_desk* desk, void (*take)(void* user, char const* bytes, size_t size),
                                      void* user);

/* ---- Labels ---- */

ZPL_API unsigned zpl_label_number(zpl_label const* label);  /* in its stream, from 1 */
ZPL_API unsigned zpl_label_copies(zpl_label const* label);  /* how many are printed */
ZPL_API char const* zpl_label_text(zpl_label const* label); /* what it says, for naming a job */
ZPL_API uint64_t zpl_label_offset(zpl_label const* label);  /* of its format in the stream, in bytes */
/* Draws copy `copy`, from 0. Copies that count go on from each other: draw them in order, another order draws those
 * before again. */
ZPL_API zpl_status zpl_label_draw(zpl_label* label, unsigned copy, zpl_page** page);
ZPL_API void zpl_label_free(zpl_label* label);

/* ---- Pages ---- */

ZPL_API unsigned zpl_page_width(zpl_page const* page);  /* pixels */
ZPL_API unsigned zpl_page_height(zpl_page const* page); /* pixels */
ZPL_API unsigned zpl_page_dpi(zpl_page const* page);
ZPL_API size_t zpl_page_bytes_per_row(zpl_page const* page); /* (width + 7) / 8 */
/* Rows of whole bytes from the top, most significant bit first; a set bit is black, those right of the page are 0. */
ZPL_API uint8_t const* zpl_page_rows(zpl_page const* page);
/* The same into the caller's memory, `stride` bytes from row to row. */
ZPL_API zpl_status zpl_page_copy_rows(zpl_page const* page, void* memory, size_t size, size_t stride);
/* As a file: "png" (ISO/IEC 15948), "pbm" (raw portable bitmap) or "pdf" (ISO 32000-1). `size` is the size of `memory`
 * before, and that of the file after the call, also with ZPL_TOO_SMALL; NULL asks for it. */
ZPL_API zpl_status zpl_page_write(zpl_page const* page, char const* format, void* memory, size_t* size);
/* What stands where: a JSON array, as "fields" of docs/report.md; empty unless the desk maps fields. */
ZPL_API char const* zpl_page_fields(zpl_page const* page);
/* What programs are told of the page: a JSON object, as one of "pages" of docs/report.md without its path. */
ZPL_API char const* zpl_page_report(zpl_page const* page);
/* One PDF of several pages, in the way of zpl_page_write. */
ZPL_API zpl_status zpl_pages_write_pdf(zpl_page const* const* pages, size_t count, void* memory, size_t* size);
ZPL_API void zpl_page_free(zpl_page* page);

#ifdef __cplusplus
}
#endif

#endif
