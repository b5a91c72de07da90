export function matchMethods(shared) {
    return {};
}
