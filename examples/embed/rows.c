/* rows: draws the first label of a stream in memory and shows it on the terminal, by its rows of dots.
 *
 * usage: rows FILE.zpl [PAGE.png]
 */
#include <stdio.h>
#include <stdlib.h>
#include <zplhost.h>

static int fail(char const* what) {
    fprintf(stderr, "rows: %s: %s\n", what, zpl_error());
    return EXIT_FAILURE;
}

/* A character for 8 dots across and 16 down, the darker the more of them are black. */
static void show(zpl_page const* page) {
    unsigned char const* rows = zpl_page_rows(page);
    size_t stride = zpl_page_bytes_per_row(page);
    unsigned x, y, down;
    for (y = 0; y + 16 <= zpl_page_height(page); y += 16) {
        for (x = 0; x + 8 <= zpl_page_width(page); x += 8) {
            unsigned ink = 0;
            for (down = 0; down < 16; ++down) {
                unsigned byte = rows[(y + down) * stride + x / 8];
                for (; byte; byte &= byte - 1) ++ink;
            }
            putchar(" .:oO#"[ink * 5 / 128]);
        }
        putchar('\n');
    }
}

static int save(zpl_page const* page, char const* path) {
    size_t size = 0;
    void* bytes;
    FILE* file;
    int is_written;
    if (zpl_page_write(page, "png", NULL, &size) != ZPL_OK) return fail("page");
    bytes = malloc(size);
    file = fopen(path, "wb");
    is_written =
        bytes && file && zpl_page_write(page, "png", bytes, &size) == ZPL_OK && fwrite(bytes, 1, size, file) == size;
    if (file && fclose(file) != 0) is_written = 0;
    free(bytes);
    if (is_written) return EXIT_SUCCESS;
    fprintf(stderr, "rows: %s cannot be written\n", path);
    return EXIT_FAILURE;
}

int main(int argc, char** argv) {
    zpl_desk* desk = NULL;
    zpl_label* label = NULL;
    zpl_page* page = NULL;
    char const* findings = NULL;
    char piece[4096];
    size_t size;
    int code = EXIT_SUCCESS;
    FILE* stream = argc > 1 ? fopen(argv[1], "rb") : NULL;
    if (!stream) {
        fprintf(stderr, "usage: rows FILE.zpl [PAGE.png]\n");
        return EXIT_FAILURE;
    }
    if (zpl_desk_open(NULL, &desk) != ZPL_OK) return fail("desk");
    /* A stream may come in any pieces. */
    while ((size = fread(piece, 1, sizeof piece, stream)) != 0) {
        if (zpl_desk_feed(desk, piece, size) != ZPL_OK) return fail("stream");
    }
    fclose(stream);
    zpl_desk_finish(desk);
    if (zpl_desk_next_label(desk, &label) == ZPL_OK) {
        if (zpl_label_draw(label, 0, &page) != ZPL_OK) return fail("label");
        printf("%u x %u dots at %u dpi, %u copies\n", zpl_page_width(page), zpl_page_height(page), zpl_page_dpi(page),
               zpl_label_copies(label));
        show(page);
        if (argc > 2) code = save(page, argv[2]);
    }
    if (zpl_desk_findings(desk, &findings) == ZPL_OK) printf("%s\n", findings);
    zpl_page_free(page);
    zpl_label_free(label);
    zpl_desk_close(desk);
    return code;
}
