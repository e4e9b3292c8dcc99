#!/bin/sh
# Renders the skin's icons from svg/ in each of their states, at their own size and as NAME@2x.png at
# twice that size, and lists them in icons.qrc. The PNG files are kept in the repository: building needs
# no renderer. Run it after changing a source or the palette. It needs rsvg-convert (Debian:
# librsvg2-bin).
#
# The drawings keep the rules of resources/render-icons.sh. They are drawn in the palette's colours Text,
# Accent and RemoveStroke; a state is the drawing in others:
#   NAME           as it is drawn
#   NAME_disabled  in one colour, DisabledText
#   NAME_checked   Text becomes Accent
# The application's own icon is a set of sizes, applicationSIZE.png.
set -eu
cd "$(dirname "$0")"

color() { # NAME
    sed -n "s/.*\"name\": \"$1\",.*\"value\": \"\(#[0-9a-f]*\)\".*/\1/p" ../palette.json
}
text=$(color Text)
accent=$(color Accent)
remove=$(color RemoveStroke)
overlay='#c9727b' # the overlay's first colour
matte='#ffffff'
disabled=$(color DisabledText)

png() { # SVG NAME [SED EXPRESSION]
    for scale in 1 2; do
        suffix=$([ $scale = 1 ] || echo @2x)
        sed -e "${3:-}" "$1" | rsvg-convert --zoom $scale --output "$2$suffix.png"
    done
}

for source in svg/icon*.svg; do
    name=$(basename "$source" .svg)
    png "$source" "$name"
    case $name in
    icon24_error | icon24_info | icon24_warning | icon24_downloaded | icon241_*) continue ;; # only shown
    esac
    png "$source" "${name}_disabled" "s/$text\\|$accent\\|$remove\\|$overlay\\|$matte/$disabled/g"
    png "$source" "${name}_checked" "s/$text/$accent/g"
done

for size in 16 32 48 128 256; do
    drawing=$([ $size -gt 32 ] || echo _small)
    rsvg-convert --width $size --height $size --output "application$size.png" "svg/application$drawing.svg"
done

{
    printf '<RCC>\n    <qresource prefix="/ZkSkin/icons">\n'
    find . -name '*.png' | LC_ALL=C sort | sed 's|^\./\(.*\)|        <file>\1</file>|'
    printf '    </qresource>\n</RCC>\n'
} >icons.qrc
