export function startPicture(root) {
}
