export function lookMethods(shared) {
    return {};
}
