export function startLook() {
}
