export function startMatch() {
}
