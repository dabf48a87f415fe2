// The editor's typefaces.

#include "editor/kit/font.h"

#include <cairo-ft.h>
#include <ft2build.h>

#include <cstdio>

#include FT_FREETYPE_H

namespace tarquil {

namespace {

constexpr const char* FOLDER = "/usr/share/fonts/truetype/dejavu/";

class Fonts {
  public:
    Fonts() {
        if (FT_Init_FreeType(&library) != 0)
            library = nullptr;
        faces[0] = load("DejaVuSans.ttf", CAIRO_FONT_WEIGHT_NORMAL, files[0]);
        faces[1] = load("DejaVuSans-Bold.ttf", CAIRO_FONT_WEIGHT_BOLD, files[1]);
    }
    Fonts(const Fonts&) = delete;
    Fonts& operator=(const Fonts&) = delete;
    // Cairo's caches may hold the faces until the process ends, and so must the files.
    ~Fonts() = default;

    cairo_font_face_t* faces[2] = {};

  private:
    cairo_font_face_t* load(const char* name, cairo_font_weight_t weight, FT_Face& file) {
        char path[128];
        std::snprintf(path, sizeof(path), "%s%s", FOLDER, name);
        if (library != nullptr && FT_New_Face(library, path, 0, &file) == 0) {
            cairo_font_face_t* face = cairo_ft_font_face_create_for_ft_face(file, 0);
            if (cairo_font_face_status(face) == CAIRO_STATUS_SUCCESS)
                return face;
            cairo_font_face_destroy(face);
        }
        return cairo_toy_font_face_create("sans-serif", CAIRO_FONT_SLANT_NORMAL, weight);
    }

    FT_Library library = nullptr;
    FT_Face files[2] = {};
};

} // namespace

cairo_font_face_t* editor_font(Weight weight) {
    static const auto* const fonts = new Fonts;
    return fonts->faces[weight == Weight::BOLD ? 1 : 0];
}

} // namespace tarquil
