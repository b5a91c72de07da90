export function pictureMethods(shared) {
    return {};
}
